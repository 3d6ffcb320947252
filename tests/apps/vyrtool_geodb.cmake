# Picks geodatabases through the library's export and the installed
# directory dialog library, with nobody there: a path given with a trailing
# slash is answered without it, a new one is refused under --must-exist
# (exit 3, saying why), and bad usage exits 2. hostile_files picks existing,
# new and refused ones in other code pages.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/data/city.gdb)

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

pick(0 "^${WORK}/data/city.gdb\n$" ${WORK}/data/city.gdb/ --must-exist --accept)
pick(3 "does not exist" ${WORK}/data/new.gdb --must-exist --accept)
pick(2 "unexpected" a b --accept)
