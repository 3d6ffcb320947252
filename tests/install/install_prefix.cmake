# Installs the build tree BUILD into the scratch prefix PREFIX (emptied
# first) as a host's developer would, without building anything, and starts
# the three programs through PATH from a folder of their own, each doing a
# small job on a copy of the installed examples.
# BINDIR and DATADIR are the build's folders of an installation, relative to
# its prefix.
include(${CMAKE_CURRENT_LIST_DIR}/install_common.cmake)
install_require(BUILD PREFIX BINDIR DATADIR)

file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "cmake --install failed (${status}):\n${output}")
endif()

set(work ${PREFIX}-run)
file(REMOVE_RECURSE ${work})
file(COPY ${PREFIX}/${DATADIR}/vyr/examples DESTINATION ${work})
set(ENV{PATH} "${PREFIX}/${BINDIR}:$ENV{PATH}")

function(run_from_path expected_status)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${work} INPUT_FILE ${work}/input.txt
        OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
    if(NOT status STREQUAL expected_status)
        message(FATAL_ERROR "${ARGN}: status ${status}, not ${expected_status}\n${output}${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# execute_process looks a bare name up in PATH, as a shell would.
file(WRITE ${work}/input.txt "main street, 5 $")
run_from_path(0 vyrtool codec encode-wwjd)
if(NOT output MATCHES "^main<space>street<comma><space>5<space><dollar>")
    message(FATAL_ERROR "vyrtool codec encode-wwjd wrote \"${output}\"")
endif()
run_from_path(0 vyr-ftprops examples/workspace.json --edit ROADS --screenshot roads.png --accept)
run_from_path(0 vyr-griddemo --rows 20 --screenshot grid.png)
foreach(picture IN ITEMS roads.png grid.png)
    if(NOT EXISTS ${work}/${picture})
        message(FATAL_ERROR "no ${picture} from the installed programs")
    endif()
endforeach()
message(STATUS "installed into ${PREFIX}; vyrtool, vyr-ftprops and vyr-griddemo run from PATH")
