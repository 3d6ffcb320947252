# Every include points down: the exports above the dialogs, the dialogs above
# the records, the records above the engine, the string objects and the
# utilities. A folder may include only the folders listed for it, and the
# lower floors include no Qt header at all.
#
#   cmake -DROOT=<source tree> -P layering.cmake
cmake_minimum_required(VERSION 3.25)
set(floors
    "engine/src|vyr util stringobjects|noqt"
    "src/util|util|noqt"
    "src/stringobjects|stringobjects util vyr|noqt"
    "src/attrtypes|attrtypes util|noqt"
    "src/ftprops|ftprops attrtypes stringobjects util vyr|noqt"
    "src/grid|grid|qt"
    "src/uikit|uikit grid stringobjects util vyr|qt"
    "src/attrtypesdlg|attrtypesdlg attrtypes uikit grid util|qt"
    "src/ftpropsdlg|ftpropsdlg attrtypesdlg ftprops attrtypes uikit grid stringobjects util vyr|qt"
    "src/frame|frame vyrguimfc ftpropsdlg ftprops uikit stringobjects util vyr|qt")
set(failures "")
foreach(floor IN LISTS floors)
    string(REPLACE "|" ";" parts "${floor}")
    list(GET parts 0 folder)
    list(GET parts 1 allowed)
    list(GET parts 2 qt)
    string(REPLACE " " ";" allowed "${allowed}")
    file(GLOB_RECURSE files ${ROOT}/${folder}/*.h ${ROOT}/${folder}/*.cpp)
    if(NOT files)
        string(APPEND failures "\n${folder}: no sources found")
    endif()
    foreach(file IN LISTS files)
        file(STRINGS ${file} includes REGEX "^[ \t]*#[ \t]*include[ \t]*[\"<]")
        foreach(line IN LISTS includes)
            if(line MATCHES "\"([A-Za-z_]+)/[^\"]+\"")
                if(NOT CMAKE_MATCH_1 IN_LIST allowed)
                    string(APPEND failures "\n${file}: ${line} (${folder} may include only ${allowed})")
                endif()
            elseif(qt STREQUAL "noqt" AND line MATCHES "<Q[A-Za-z]+")
                string(APPEND failures "\n${file}: ${line} (${folder} must not depend on Qt)")
            endif()
        endforeach()
    endforeach()
endforeach()
if(failures)
    message(FATAL_ERROR "includes that point up or sideways:${failures}")
endif()
