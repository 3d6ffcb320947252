# Picks geodatabases through the library's export and the installed
# directory dialog library, with nobody there: OK on a geodatabase prints its
# path, OK elsewhere is refused (exit 3, saying why), a new one may be named
# only without --must-exist, and a picture can be drawn.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/data/city.gdb ${WORK}/data/plain)

function(pick expected_status expected_output)
    execute_process(COMMAND ${TOOL} geodb ${ARGN} OUTPUT_VARIABLE printed ERROR_VARIABLE message
                    RESULT_VARIABLE status)
    # What a pick prints on success, or says on failure.
    set(said "${printed}")
    if(NOT expected_status EQUAL 0)
        set(said "${message}")
    endif()
    if(NOT status EQUAL expected_status OR NOT said MATCHES "${expected_output}")
        message(FATAL_ERROR "vyrtool geodb ${ARGN}: exit ${status} (expected ${expected_status}):\n${printed}${message}")
    endif()
endfunction()

pick(0 "^${WORK}/data/city.gdb\n$" ${WORK}/data/city.gdb --accept)
pick(0 "^${WORK}/data/city.gdb\n$" ${WORK}/data/city.gdb/ --must-exist --accept)
pick(3 "not a geodatabase" ${WORK}/data/plain --accept)
pick(0 "^${WORK}/data/new.gdb\n$" ${WORK}/data/new.gdb --accept)
pick(3 "does not exist" ${WORK}/data/new.gdb --must-exist --accept)
pick(0 "" ${WORK}/data/plain --screenshot ${WORK}/picker.png)
if(NOT EXISTS ${WORK}/picker.png)
    message(FATAL_ERROR "vyrtool geodb --screenshot drew nothing")
endif()
pick(2 "unexpected" a b --accept)
