# Resource libraries whose templates lack a control the code binds, or lack a
# whole template (an older or half-translated library): the dialog must work
# without them, ending with OK or with a refusal that says why, never crash.
# Each library is built here with rcc from the English templates and put in
# an installation that is the stage but for res/.
#
#   cmake -DFTPROPS=... -DSTAGE=... -DEXAMPLES=... -DRESOURCES=... -DRCC=... -P hostile_templates.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/hostile_common.cmake)
hostile_work_folder(work)
file(COPY ${EXAMPLES}/ DESTINATION ${work}/examples)
file(GLOB stageEntries RELATIVE ${STAGE} ${STAGE}/*)

# An installation in ${work}/<name> whose template <template> lacks the
# control <control>, or is missing when <control> is "".
function(make_installation name template control)
    set(folder ${work}/${name}/resources)
    file(COPY ${RESOURCES}/en/ DESTINATION ${folder})
    set(ui ${folder}/templates/${template}.ui)
    if(control)
        file(READ ${ui} text)
        string(REGEX REPLACE "<property name=\"controlId\">[ \t\n]*<number>${control}</number>[ \t\n]*</property>"
               "" stripped "${text}")
        if(stripped STREQUAL text)
            hostile_fail("template ${template} has no control ${control} to take away")
        endif()
        file(WRITE ${ui} "${stripped}")
    else()
        file(REMOVE ${ui})
    endif()
    file(GLOB_RECURSE files RELATIVE ${folder} ${folder}/*)
    set(qrc "<RCC><qresource prefix=\"/\">\n")
    foreach(file IN LISTS files)
        string(APPEND qrc "<file alias=\"${file}\">${folder}/${file}</file>\n")
    endforeach()
    string(APPEND qrc "</qresource></RCC>\n")
    file(WRITE ${work}/${name}/library.qrc "${qrc}")
    file(MAKE_DIRECTORY ${work}/${name}/home/res)
    execute_process(COMMAND ${RCC} --binary --no-compress ${work}/${name}/library.qrc
                            -o ${work}/${name}/home/res/vyr_res.rcc RESULT_VARIABLE built)
    if(NOT built EQUAL 0)
        hostile_fail("rcc could not build the library without ${template}/${control}")
    endif()
    foreach(entry IN LISTS stageEntries)
        if(NOT entry STREQUAL "res")
            file(CREATE_LINK ${STAGE}/${entry} ${work}/${name}/home/${entry} SYMBOLIC)
        endif()
    endforeach()
endfunction()

# General page without the database user field, the geometry or the fan-out
# attribute, or without its template; the other pages without their grids.
foreach(case "no-user;514;1297" "no-geometry;514;1158" "no-fanout-attribute;514;1289" "no-dataset;514;1169"
             "no-general;514;"
             "no-attribute-grid;339;1184" "no-format-grid;340;1144" "no-parameter-grid;343;1187")
    list(GET case 0 name)
    list(GET case 1 template)
    list(GET case 2 control)
    make_installation(${name} ${template} "${control}")
    # A database format's feature type and a file format's.
    foreach(featureType transport.roads ROADS)
        hostile_run(run TIMEOUT 30 WORKING_DIRECTORY ${work}/examples
                    COMMAND env VYR_HOME=${work}/${name}/home/ ${FTPROPS} workspace.json --edit ${featureType} --accept)
        hostile_first_line(line "${run_said}")
        if(run_broken OR NOT (run_status EQUAL 0 OR (run_status EQUAL 3 AND NOT line STREQUAL "")))
            hostile_fail("${name}, ${featureType}: ${run_outcome} (want OK, or a refusal that says why)")
        endif()
        # A control that is not there changes nothing: the feature type stays
        # in its dataset.
        if(run_out MATCHES "now in")
            hostile_fail("${name}, ${featureType}: OK moved the feature type: ${run_outcome}")
        endif()
    endforeach()
endforeach()

# No resource library at all: the dialog cannot open, and that is what the
# user is told (exit 2), not that the dialog was cancelled.
file(MAKE_DIRECTORY ${work}/no-library)
foreach(entry IN LISTS stageEntries)
    if(NOT entry STREQUAL "res")
        file(CREATE_LINK ${STAGE}/${entry} ${work}/no-library/${entry} SYMBOLIC)
    endif()
endforeach()
hostile_run(run TIMEOUT 30 WORKING_DIRECTORY ${work}/examples
            COMMAND env VYR_HOME=${work}/no-library/ ${FTPROPS} workspace.json --edit ROADS --accept)
if(run_broken OR NOT run_status EQUAL 2 OR NOT run_said MATCHES "resource library"
   OR NOT run_said MATCHES "could not be opened" OR run_out MATCHES "cancelled")
    hostile_fail("no resource library: ${run_outcome}: ${run_said}")
endif()

file(REMOVE_RECURSE ${work})
hostile_finish()
