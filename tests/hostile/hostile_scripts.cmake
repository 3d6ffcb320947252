# A capability file is data anyone can hand over, but the feature type name
# script it names runs in the engine's Tcl. Only a script of the
# installation's metafile/ folder may run, under its plain name: not Tcl
# smuggled in with the name, not a script elsewhere reached with "../" or an
# absolute path. A script name the folder does not hold must not break
# anything either. Both programs that run the script are tried.
#
#   cmake -DVYRTOOL=... -DFTPROPS=... -DSTAGE=... -DEXAMPLES=... -P hostile_scripts.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/hostile_common.cmake)
hostile_work_folder(work)
file(COPY ${EXAMPLES}/ DESTINATION ${work}/examples)

# What a hostile script would leave behind: a file made by a program it
# starts, and one it writes itself.
set(started ${work}/started-by-script)
set(written ${work}/written-by-script)
file(WRITE ${work}/elsewhere/evil.tcl
     "exec touch ${started}\nset out [open ${written} w]\nputs $out x\nclose $out\n")
file(RELATIVE_PATH climbing ${STAGE}/metafile ${work}/elsewhere/evil.tcl)

# The script each case names in the capability file (kept apart: the
# injected one holds semicolons, which a list would split).
set(script_injected "xlsx_sheet_names.tcl}; exec sh -c {touch ${started}}; set y {")
set(script_climbing "${climbing}")
set(script_absolute "${work}/elsewhere/evil.tcl")
set(script_missing "no_such_script.tcl")
file(READ ${EXAMPLES}/formats/xlsx.fmt original)
foreach(name IN ITEMS injected climbing absolute missing)
    string(REGEX REPLACE "FEAT_TYPE_VALIDATION_SCRIPT,[^\n]*" "FEAT_TYPE_VALIDATION_SCRIPT,${script_${name}}"
           hostile "${original}")
    set(format ${work}/${name}.fmt)
    file(WRITE ${format} "${hostile}")
    file(WRITE ${work}/examples/formats/xlsx.fmt "${hostile}")
    foreach(program IN ITEMS vyrtool vyr-ftprops)
        file(REMOVE ${started} ${written})
        if(program STREQUAL "vyrtool")
            hostile_run(run COMMAND ${VYRTOOL} name resolve "Sheet:1" --format ${format})
        else()
            hostile_run(run COMMAND ${FTPROPS} ${work}/examples/workspace.json --edit "Inventory 2026" --accept)
        endif()
        set(what "${program}, ${name} script")
        string(TOLOWER "${run_said}" said)
        if(run_broken)
            hostile_fail("${what}: ${run_outcome}")
        endif()
        if(EXISTS ${started} OR EXISTS ${written})
            hostile_fail("${what}: the script ran")
        endif()
        if(program STREQUAL "vyrtool" AND NOT name STREQUAL "missing" AND NOT said MATCHES "script|\\.tcl")
            hostile_fail("${what}: no word that the script is not used: ${run_outcome}")
        endif()
    endforeach()
endforeach()

file(REMOVE_RECURSE ${work})
hostile_finish()
