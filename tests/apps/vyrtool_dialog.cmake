# Renders the about dialog and a template with vyrtool, closes the about
# dialog with OK, and checks the exit codes of bad usage (2) and of a template
# the resource library does not have (1).
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
foreach(command "about" "template;130")
    string(REPLACE ";" "_" name "${command}")
    execute_process(COMMAND ${TOOL} ${command} --screenshot ${WORK}/${name}.png RESULT_VARIABLE status)
    if(NOT status EQUAL 0 OR NOT EXISTS ${WORK}/${name}.png)
        message(FATAL_ERROR "vyrtool ${command} --screenshot: exit ${status}, no picture")
    endif()
endforeach()
# It prints nothing on standard output, and nothing of a missing runtime
# folder where the session gave none: the one it makes itself is gone after.
file(MAKE_DIRECTORY ${WORK}/tmp)
execute_process(COMMAND ${CMAKE_COMMAND} -E env --unset=XDG_RUNTIME_DIR TMPDIR=${WORK}/tmp ${TOOL} about --accept
                        --screenshot ${WORK}/accepted.png
                OUTPUT_VARIABLE result ERROR_VARIABLE said RESULT_VARIABLE status)
file(GLOB left ${WORK}/tmp/*)
if(NOT status EQUAL 0 OR NOT result STREQUAL "" OR said MATCHES "XDG_RUNTIME_DIR" OR left)
    message(FATAL_ERROR "vyrtool about --accept: exit ${status}, printed \"${result}\", said \"${said}\", left ${left}")
endif()
execute_process(COMMAND ${TOOL} template 9999 --accept ERROR_VARIABLE message RESULT_VARIABLE status)
if(NOT status EQUAL 2 OR NOT message MATCHES "9999")
    message(FATAL_ERROR "vyrtool template 9999: expected exit 2 naming the template, got ${status}: ${message}")
endif()
foreach(bad "template" "template;x" "about;--frobnicate" "about;--screenshot")
    execute_process(COMMAND ${TOOL} ${bad} OUTPUT_QUIET ERROR_VARIABLE message RESULT_VARIABLE status)
    if(NOT status EQUAL 2 OR message STREQUAL "")
        message(FATAL_ERROR "vyrtool ${bad}: expected exit 2 and a message, got ${status}")
    endif()
endforeach()
