# vyr-ftprops on a copy of the bundled workspace: OK saves only what changed
# (nothing, here), a screenshot without --accept cancels and saves nothing, a
# refused OK says why and ends with 3 at once, and bad usage, a missing
# feature type and a broken workspace end with 2.
file(REMOVE_RECURSE ${WORK})
file(COPY ${EXAMPLES}/ DESTINATION ${WORK})
file(READ ${WORK}/schemas/shapefile-roads.json before)

execute_process(COMMAND ${TOOL} ${WORK}/workspace.json --edit ROADS --screenshot ${WORK}/roads.png --accept
    OUTPUT_VARIABLE said RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT EXISTS ${WORK}/roads.png OR NOT said MATCHES "nothing changed")
    message(FATAL_ERROR "--accept: exit ${status}, said: ${said}")
endif()
execute_process(COMMAND ${TOOL} ${WORK}/workspace.json --edit stations --screenshot ${WORK}/stations.png
    OUTPUT_VARIABLE said RESULT_VARIABLE status)
if(NOT status EQUAL 1 OR NOT EXISTS ${WORK}/stations.png OR NOT said MATCHES "cancelled")
    message(FATAL_ERROR "--screenshot alone: exit ${status}, said: ${said}")
endif()
file(READ ${WORK}/schemas/shapefile-roads.json after)
if(NOT before STREQUAL after)
    message(FATAL_ERROR "a feature file changed without an edit")
endif()

# A code page that would change ASCII (UTF-7 reads "+b" as a shift) is
# refused before anything is read or saved.
execute_process(COMMAND ${CMAKE_COMMAND} -E env VYR_CODEPAGE=UTF-7 ${TOOL} ${WORK}/workspace.json --edit ROADS --accept
    OUTPUT_QUIET ERROR_VARIABLE reason RESULT_VARIABLE status TIMEOUT 60)
file(READ ${WORK}/schemas/shapefile-roads.json after)
if(NOT status EQUAL 2 OR NOT reason MATCHES "VYR_CODEPAGE.*ASCII" OR NOT before STREQUAL after)
    message(FATAL_ERROR "VYR_CODEPAGE=UTF-7: exit ${status}, said: ${reason}")
endif()

# A geometry the format does not know: OK is refused, nothing waits for a
# person, nothing is saved.
file(READ ${WORK}/schemas/shapefile-wells.json wells)
string(REGEX REPLACE "\"\\*vyr_geometry\\{0\\}\": \"[a-z_]+\"" "\"*vyr_geometry{0}\": \"no_such_geometry\""
       unknown "${wells}")
if(unknown STREQUAL wells)
    message(FATAL_ERROR "the test could not plant an unknown geometry")
endif()
file(WRITE ${WORK}/schemas/shapefile-wells.json "${unknown}")
execute_process(COMMAND ${TOOL} ${WORK}/workspace.json --edit WELLS --accept
    OUTPUT_VARIABLE said ERROR_VARIABLE reason RESULT_VARIABLE status TIMEOUT 60)
file(READ ${WORK}/schemas/shapefile-wells.json kept)
if(NOT status EQUAL 3 OR NOT reason MATCHES "geometry" OR NOT kept STREQUAL unknown)
    message(FATAL_ERROR "refused OK: exit ${status}, said: ${said} ${reason}")
endif()

file(WRITE ${WORK}/broken.json "{\"feature_types\": [ {\"feature\": \"schemas/none.json\", \"format\": \"formats/csv.fmt\"} ]}")
foreach(bad "${WORK}/workspace.json;--edit;nothere" "${WORK}/broken.json;--accept" "${WORK}/formats/csv.fmt" "")
    execute_process(COMMAND ${TOOL} ${bad} OUTPUT_QUIET ERROR_VARIABLE message RESULT_VARIABLE status)
    if(NOT status EQUAL 2 OR message STREQUAL "")
        message(FATAL_ERROR "vyr-ftprops ${bad}: expected exit 2 and a message, got ${status}")
    endif()
endforeach()
