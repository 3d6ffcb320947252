# vyr-ftprops saving into a workspace that fights back: links planted where
# it might put scratch files, a linked or private feature file, read-only
# files and folders, a full disk, and no display at all. Cancel must leave
# the disk as it was; a save must go to the feature file and nowhere else,
# keep what the file is (a link, its mode), and a save that cannot happen
# must say so and leave the file whole.
#
#   cmake -DFTPROPS=... -DVYRTOOL=... -DGRIDDEMO=... -DEXAMPLES=... -P hostile_saves.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/hostile_common.cmake)
hostile_work_folder(work)

# A change OK has to save, made through the files alone: a shapefile feature
# type name may hold neither ":" nor blanks, so on OK the dialog makes
# "wells:bad name" into "wells_bad_name". "vyr_format" naming another format
# of the workspace moves the feature type there as well, which rewrites
# workspace.json.
set(edited "wells:bad name")
function(fresh_workspace folder)
    file(REMOVE_RECURSE ${folder})
    file(COPY ${EXAMPLES}/ DESTINATION ${folder})
    file(READ ${folder}/schemas/shapefile-wells.json text)
    string(REPLACE "\"WELLS\"" "\"${edited}\"" text "${text}")
    string(REPLACE "\"WELL_ID\": \"" "\"vyr_format\": \"POSTGRES\", \"WELL_ID\": \"" text "${text}")
    file(WRITE ${folder}/schemas/shapefile-wells.json "${text}")
endfunction()

# expect_saved(<what> <feature file>): the last run's OK saved the legal name.
function(expect_saved what feature)
    set(saved "")
    if(EXISTS ${feature})
        file(READ ${feature} saved)
    endif()
    if(NOT run_status EQUAL 0 OR NOT run_out MATCHES "saved" OR run_out MATCHES "nothing changed"
       OR NOT saved MATCHES "wells_bad_name")
        hostile_fail("${what}: the change is not in ${feature}: ${run_outcome}")
    endif()
endfunction()

# Links to a file outside the workspace under every scratch name a save ever
# used, next to each feature file and the workspace file.
set(victim ${work}/victim.txt)
file(WRITE ${victim} "belongs to someone else\n")
set(ws ${work}/linked)
fresh_workspace(${ws})
set(links ${ws}/workspace.json.vyr-new)
file(GLOB features ${ws}/schemas/*.json)
foreach(feature IN LISTS features)
    list(APPEND links ${feature}.vyr-snapshot ${feature}.vyr-snapshot.saving ${feature}.saving)
endforeach()
foreach(link IN LISTS links)
    file(CREATE_LINK ${victim} ${link} SYMBOLIC)
endforeach()
function(expect_links_kept what)
    file(READ ${victim} content)
    if(NOT content STREQUAL "belongs to someone else\n")
        hostile_fail("${what}: wrote through a planted link into ${victim}")
    endif()
    set(lost "")
    foreach(link IN LISTS links)
        set(target "")
        if(IS_SYMLINK ${link})
            file(READ_SYMLINK ${link} target)
        endif()
        if(NOT target STREQUAL victim)
            get_filename_component(name ${link} NAME)
            list(APPEND lost ${name})
        endif()
    endforeach()
    if(lost)
        hostile_fail("${what}: planted links gone or replaced: ${lost}")
    endif()
endfunction()

# Cancel: nothing written, nothing deleted, not even a scratch file for a
# moment (the folder's time would change). The picture goes outside.
foreach(name IN ITEMS "${edited}" stations)
    hostile_listing(before ${ws})
    hostile_run(run COMMAND ${FTPROPS} ${ws}/workspace.json --edit ${name} --screenshot ${work}/cancel.png)
    hostile_listing(after ${ws})
    if(NOT run_status EQUAL 1)
        hostile_fail("cancel ${name}: ${run_outcome}")
    endif()
    if(NOT before STREQUAL after)
        hostile_listing_changes(changes "${before}" "${after}")
        hostile_fail("cancel ${name} changed the disk (- before, + after):${changes}")
    endif()
    expect_links_kept("cancel ${name}")
endforeach()
hostile_run(run COMMAND ${FTPROPS} ${ws}/workspace.json --edit ${edited} --accept)
expect_saved("OK beside planted links" ${ws}/schemas/shapefile-wells.json)
if(NOT run_out MATCHES "now in POSTGRES")
    hostile_fail("OK did not move the feature type, so the workspace file's save went untried: ${run_outcome}")
endif()
expect_links_kept("OK")
if(IS_SYMLINK ${ws}/workspace.json OR IS_SYMLINK ${ws}/schemas/shapefile-wells.json)
    hostile_fail("OK left a planted link in place of a workspace file")
endif()

# A feature file that is a link stays one and its target gets the change; a
# private one stays private.
foreach(kind IN ITEMS link private)
    set(ws ${work}/${kind})
    fresh_workspace(${ws})
    set(feature ${ws}/schemas/shapefile-wells.json)
    set(real ${feature})
    if(kind STREQUAL "link")
        set(real ${ws}/kept/wells.json)
        file(MAKE_DIRECTORY ${ws}/kept)
        file(RENAME ${feature} ${real})
        file(CREATE_LINK ../kept/wells.json ${feature} SYMBOLIC)
    else()
        execute_process(COMMAND chmod 600 ${feature})
    endif()
    hostile_run(run COMMAND ${FTPROPS} ${ws}/workspace.json --edit ${edited} --accept)
    expect_saved("OK on a ${kind} feature file" ${real})
    execute_process(COMMAND stat -c %a ${real} OUTPUT_VARIABLE mode OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(kind STREQUAL "link" AND NOT IS_SYMLINK ${feature})
        hostile_fail("OK replaced the linked feature file by a plain file")
    elseif(kind STREQUAL "private" AND NOT mode STREQUAL "600")
        hostile_fail("OK made the private feature file mode ${mode}")
    endif()
endforeach()

# expect_unsaved(<what> <feature file> <its hash before>): OK could not save
# and said so, naming the file, and the file is as it was.
function(expect_unsaved what feature hash)
    set(now "")
    if(EXISTS ${feature})
        file(SHA256 ${feature} now)
    endif()
    get_filename_component(name ${feature} NAME)
    if(NOT run_status EQUAL 2 OR NOT run_said MATCHES "${name}" OR run_out MATCHES "nothing changed")
        hostile_fail("${what}: ${run_outcome}")
    endif()
    if(NOT now STREQUAL hash)
        hostile_fail("${what}: the feature file changed")
    endif()
endfunction()

# Read-only, for the user who owns the files: the folders, the file, both.
foreach(kind IN ITEMS folders file file+folders)
    set(ws ${work}/readonly-${kind})
    fresh_workspace(${ws})
    set(feature ${ws}/schemas/shapefile-wells.json)
    file(SHA256 ${feature} hash)
    if(HOSTILE_ROOT)
        execute_process(COMMAND chown -R 65534:65534 ${ws})
    endif()
    if(NOT kind STREQUAL "folders")
        execute_process(COMMAND chmod 444 ${feature})
    endif()
    if(NOT kind STREQUAL "file")
        execute_process(COMMAND chmod 555 ${ws} ${ws}/schemas)
    endif()
    hostile_run(run AS_USER COMMAND ${FTPROPS} ${ws}/workspace.json --edit ${edited} --accept)
    expect_unsaved("OK with read-only ${kind}" ${feature} ${hash})
    execute_process(COMMAND chmod -R u+w ${ws})
endforeach()

# A full disk: a small file system, filled up before OK.
set(disk ${work}/disk)
file(MAKE_DIRECTORY ${disk})
execute_process(COMMAND mount -t tmpfs -o size=512k,mode=755 tmpfs ${disk} RESULT_VARIABLE status ERROR_VARIABLE why)
if(NOT status EQUAL 0)
    hostile_first_line(why "${why}")
    message(STATUS "skipped: a full disk; cannot mount a small file system here (${why})")
else()
    fresh_workspace(${disk}/ws)
    set(feature ${disk}/ws/schemas/shapefile-wells.json)
    file(SHA256 ${feature} hash)
    execute_process(COMMAND dd if=/dev/zero of=${disk}/filler bs=4k OUTPUT_QUIET ERROR_QUIET)
    hostile_run(run COMMAND ${FTPROPS} ${disk}/ws/workspace.json --edit ${edited} --accept)
    expect_unsaved("OK on a full disk" ${feature} ${hash})
    execute_process(COMMAND umount ${disk})
endif()

# No display at all: a refused OK still ends at once with 3.
set(ws ${work}/nodisplay)
file(COPY ${EXAMPLES}/ DESTINATION ${ws})
file(READ ${ws}/schemas/shapefile-wells.json wells)
string(REGEX REPLACE "\"\\*vyr_geometry\\{0\\}\": \"[a-z_]+\"" "\"*vyr_geometry{0}\": \"no_such_geometry\""
       wells "${wells}")
file(WRITE ${ws}/schemas/shapefile-wells.json "${wells}")
hostile_run(run TIMEOUT 20 COMMAND ${HOSTILE_NO_DISPLAY} ${FTPROPS} ${ws}/workspace.json --edit WELLS --accept)
if(NOT run_status EQUAL 3)
    hostile_fail("refused OK without a display: ${run_outcome}")
endif()
# Where nobody can reach a window - no display, or a platform that draws
# for nobody, chosen by the environment or -platform (a Wayland display is
# taken as given, so only the platform keeps the person away) - a run that
# would wait for a person ends at once with 2 and says why; help ends by
# itself. Each case: status|environment|program|arguments.
foreach(case IN ITEMS "2|-u QT_QPA_PLATFORM|${FTPROPS}|${ws}/workspace.json"
        "2|-u QT_QPA_PLATFORM|${FTPROPS}|${ws}/workspace.json --edit ROADS"
        "2|QT_QPA_PLATFORM=offscreen|${FTPROPS}|${ws}/workspace.json"
        "2|QT_QPA_PLATFORM=minimal|${FTPROPS}|${ws}/workspace.json --edit ROADS"
        "2|-u QT_QPA_PLATFORM WAYLAND_DISPLAY=wayland-9|${FTPROPS}|-platform offscreen ${ws}/workspace.json"
        "2|QT_QPA_PLATFORM=offscreen:fontengine=freetype|${VYRTOOL}|about"
        "2|QT_QPA_PLATFORM=minimal|${GRIDDEMO}|--rows 10"
        "0|-u QT_QPA_PLATFORM|${FTPROPS}|--help-all")
    string(REPLACE "|" ";" case "${case}")
    list(POP_FRONT case expected where program arguments)
    separate_arguments(where UNIX_COMMAND "${where}")
    separate_arguments(arguments UNIX_COMMAND "${arguments}")
    hostile_run(run COMMAND env -u DISPLAY -u WAYLAND_DISPLAY ${where} ${program} ${arguments})
    if(NOT run_status EQUAL expected OR (expected EQUAL 2 AND run_said STREQUAL ""))
        cmake_path(GET program FILENAME name)
        hostile_fail("${name} ${arguments} with ${where}: ${run_outcome}")
    endif()
endforeach()

# A picture is a new file: a link planted under its name, in a folder that
# may be a stranger's, is refused by every program, and its target is kept.
set(pictures ${work}/pictures)
file(MAKE_DIRECTORY ${pictures})
file(WRITE ${work}/victim.txt "kept\n")
file(CREATE_LINK ${work}/victim.txt ${pictures}/shot.png SYMBOLIC)
foreach(program IN ITEMS ftprops vyrtool griddemo)
    if(program STREQUAL "ftprops")
        set(command ${FTPROPS} ${ws}/workspace.json --edit ROADS --screenshot ${pictures}/shot.png)
    elseif(program STREQUAL "vyrtool")
        set(command ${VYRTOOL} about --screenshot ${pictures}/shot.png --accept)
    else()
        set(command ${GRIDDEMO} --rows 10 --screenshot ${pictures}/shot.png)
    endif()
    hostile_run(run TIMEOUT 20 COMMAND ${command})
    file(READ ${work}/victim.txt victim)
    if(run_broken OR NOT run_status EQUAL 2 OR NOT run_said MATCHES "symbolic link" OR NOT victim STREQUAL "kept\n"
       OR NOT IS_SYMLINK ${pictures}/shot.png)
        hostile_fail("${program} --screenshot through a planted link: ${run_outcome}")
    endif()
endforeach()

file(REMOVE_RECURSE ${work})
hostile_finish()
