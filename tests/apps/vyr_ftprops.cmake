# vyr-ftprops on a copy of the bundled workspace: OK saves only what changed
# (nothing, here), a screenshot without --accept cancels and saves nothing,
# and bad usage, a missing feature type and a broken workspace end with 2.
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

file(WRITE ${WORK}/broken.json "{\"feature_types\": [ {\"feature\": \"schemas/none.json\", \"format\": \"formats/csv.fmt\"} ]}")
foreach(bad "${WORK}/workspace.json;--edit;nothere" "${WORK}/broken.json;--accept" "${WORK}/formats/csv.fmt" "")
    execute_process(COMMAND ${TOOL} ${bad} OUTPUT_QUIET ERROR_VARIABLE message RESULT_VARIABLE status)
    if(NOT status EQUAL 2 OR message STREQUAL "")
        message(FATAL_ERROR "vyr-ftprops ${bad}: expected exit 2 and a message, got ${status}")
    endif()
endforeach()
