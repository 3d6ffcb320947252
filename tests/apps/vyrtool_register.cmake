# Registers the library as a component server into scratch configuration
# folders and removes it again, machine-wide and per user, through vyrtool:
# each run prints what it wrote or removed, into the folder of its scope
# (comserver_test checks that the folders are left exactly as they were).
file(REMOVE_RECURSE ${WORK})
set(machine ${WORK}/machine)
set(user ${WORK}/user)
file(MAKE_DIRECTORY ${machine} ${user})
foreach(scope "machine" "user")
    set(flags "")
    set(written ${machine})
    if(scope STREQUAL "user")
        set(flags --user)
        set(written ${user})
    endif()
    execute_process(COMMAND ${CMAKE_COMMAND} -E env XDG_CONFIG_DIRS=${machine} XDG_CONFIG_HOME=${user}
                            ${TOOL} register ${flags}
                    OUTPUT_VARIABLE printed RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "vyrtool register ${flags}: exit ${status}\n${printed}")
    endif()
    foreach(expected "written: vyr\\\\Classes\\\\TypeLib\\\\{[-0-9A-F]+}\\\\1.0  @ = vyrguimfc 1.0 Type Library"
                     "written: vyr\\\\Classes\\\\Interface\\\\{[-0-9A-F]+}  @ = VVyrOlePropertyPage"
                     "InProcServer32  @ = [^\n]*libvyrguimfc.so")
        if(NOT printed MATCHES "${expected}")
            message(FATAL_ERROR "vyrtool register ${flags} did not print \"${expected}\":\n${printed}")
        endif()
    endforeach()
    if(NOT EXISTS ${written}/vyr/Classes.conf)
        message(FATAL_ERROR "vyrtool register ${flags} wrote nothing into ${written}")
    endif()
    execute_process(COMMAND ${CMAKE_COMMAND} -E env XDG_CONFIG_DIRS=${machine} XDG_CONFIG_HOME=${user}
                            ${TOOL} unregister ${flags}
                    OUTPUT_VARIABLE printed RESULT_VARIABLE status)
    if(NOT status EQUAL 0 OR NOT printed MATCHES "removed: vyr\\\\Classes\\\\TypeLib")
        message(FATAL_ERROR "vyrtool unregister ${flags}: exit ${status}\n${printed}")
    endif()
endforeach()

# A folder nobody can write into: why, the failing step's status, and no change.
file(WRITE ${WORK}/blocked/vyr "a file where the folder belongs")
execute_process(COMMAND ${CMAKE_COMMAND} -E env XDG_CONFIG_DIRS=${WORK}/blocked ${TOOL} register
                OUTPUT_VARIABLE printed ERROR_VARIABLE message RESULT_VARIABLE status)
if(NOT status EQUAL 1 OR NOT message MATCHES "blocked/vyr: is not a folder[^\n]*\n[^\n]*0x8002801C"
   OR NOT printed STREQUAL "")
    message(FATAL_ERROR "vyrtool register into a blocked folder: exit ${status}: ${printed}${message}")
endif()
execute_process(COMMAND ${TOOL} register --frobnicate OUTPUT_QUIET ERROR_QUIET RESULT_VARIABLE status)
if(NOT status EQUAL 2)
    message(FATAL_ERROR "vyrtool register --frobnicate: expected exit 2, got ${status}")
endif()
