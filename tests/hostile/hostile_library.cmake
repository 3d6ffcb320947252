# A folder someone else filled, a downloaded workspace say, is where the
# programs run. Libraries lying in it must never be loaded: the programs find
# their own beside themselves and the rest where the system keeps them. Each
# name is planted alone (a copy of planted_library.c, which leaves a marker
# when loaded); a program must then work as it always does.
#
#   cmake -DPLANTED=<built planted library> -DVYRTOOL=... -DFTPROPS=... -DGRIDDEMO=...
#         -DEXAMPLES=... -P hostile_library.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/hostile_common.cmake)
hostile_work_folder(work)
set(marker ${work}/planted-library-loaded)

# The engine's Tcl, which only it asks for; the C library, which everything
# does; Qt, which a planted copy cannot stand in for, so a load shows as a
# program that no longer starts.
foreach(name IN ITEMS libtcl8.6.so libc.so.6 libQt6Core.so.6)
    set(folder ${work}/${name}-planted)
    file(REMOVE_RECURSE ${folder})
    file(COPY ${EXAMPLES}/ DESTINATION ${folder})
    configure_file(${PLANTED} ${folder}/${name} COPYONLY)
    # <program>|<expected output>|<arguments>: the name script runs in Tcl.
    foreach(run "vyrtool|History_|name;resolve;History;--format;formats/xlsx.fmt"
                "vyr-ftprops|nothing changed|workspace.json;--edit;ROADS;--accept"
                "vyr-griddemo|Usage|--help")
        string(REPLACE "|" ";" run "${run}")
        list(POP_FRONT run program expected)
        set(path ${VYRTOOL})
        if(program STREQUAL "vyr-ftprops")
            set(path ${FTPROPS})
        elseif(program STREQUAL "vyr-griddemo")
            set(path ${GRIDDEMO})
        endif()
        file(REMOVE ${marker})
        hostile_run(run WORKING_DIRECTORY ${folder} COMMAND env VYR_PLANTED_MARKER=${marker} ${path} ${run})
        if(EXISTS ${marker})
            hostile_fail("${program} loaded the ${name} planted in its working directory")
        elseif(NOT run_status EQUAL 0 OR NOT "${run_out}" MATCHES "${expected}")
            hostile_first_line(line "${run_said}")
            hostile_fail("${program} beside a planted ${name}: ${run_how}: ${line}")
        endif()
    endforeach()
endforeach()

# The directory dialog, which the library opens at run time by name: only
# the installation's copy may answer, never one beside a geodatabase.
set(folder ${work}/libvyr_dirDialog.so-planted)
file(REMOVE_RECURSE ${folder})
file(MAKE_DIRECTORY ${folder}/city.gdb)
configure_file(${PLANTED} ${folder}/libvyr_dirDialog.so COPYONLY)
file(REMOVE ${marker})
hostile_run(run WORKING_DIRECTORY ${folder} COMMAND env VYR_PLANTED_MARKER=${marker} ${VYRTOOL} geodb city.gdb --accept)
if(EXISTS ${marker})
    hostile_fail("vyrtool geodb loaded the libvyr_dirDialog.so planted in its working directory")
elseif(NOT run_status EQUAL 0 OR NOT "${run_out}" MATCHES "city.gdb")
    hostile_first_line(line "${run_said}")
    hostile_fail("vyrtool geodb beside a planted libvyr_dirDialog.so: ${run_how}: ${line}")
endif()

file(REMOVE_RECURSE ${work})
hostile_finish()
