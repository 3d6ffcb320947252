# Files that are not what a program expects where it expects a capability,
# schema or workspace file: a folder, a pipe nobody writes to, an endless
# device, a file the user may not read. Each must end within seconds with a
# nonzero exit and a message, not hang on the pipe, read forever or abort on
# an exception nobody caught. Text that is not UTF-8 must not abort either.
# Also the grid demo, which must not abort when there is no display.
#
#   cmake -DVYRTOOL=... -DFTPROPS=... -DGRIDDEMO=... -DEXAMPLES=... -P hostile_files.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/hostile_common.cmake)
hostile_work_folder(work)
file(COPY ${EXAMPLES}/ DESTINATION ${work}/examples)
set(formats ${work}/examples/formats)
set(schema ${work}/examples/schemas/csv-stations.json)

file(MAKE_DIRECTORY ${work}/folder.fmt)
execute_process(COMMAND mkfifo ${work}/fifo.fmt)
file(WRITE ${work}/unreadable.fmt "FORMAT,CSV\n")
# The user tries to read it; as root it would be readable whatever its mode.
execute_process(COMMAND chmod 000 ${work}/unreadable.fmt)
# 0xE9, an e with an acute accent in Latin-1, in the format's name.
execute_process(COMMAND printf "FORMAT,CAF\\351\\nSOURCE,no\\n" OUTPUT_FILE ${work}/latin1.fmt)
execute_process(COMMAND printf "{\"feature_types\": [], \"note\": \"caf\\351\"}" OUTPUT_FILE ${work}/latin1.json)
set(specials ${work}/folder.fmt ${work}/fifo.fmt /dev/zero ${work}/unreadable.fmt)

# expect_refusal(<what> <name in the message or ""> COMMAND ...)
function(expect_refusal what named)
    hostile_run(run AS_USER ${ARGN})
    hostile_first_line(line "${run_said}")
    if(run_broken)
        hostile_fail("${what}: ${run_how}: ${line}")
    elseif(NOT run_status EQUAL 2 OR run_said STREQUAL "")
        hostile_fail("${what}: ${run_outcome} (want exit 2 and a message)")
    elseif(named AND NOT run_said MATCHES "${named}")
        hostile_fail("${what}: the message does not name ${named}: ${run_said}")
    endif()
endfunction()

# vyrtool: every command that reads a file, the hostile one in place of @.
set(commands
    "format show @"
    "type generic char(3) --format @"
    "type native vyr_char(3) --format @"
    "type convert char(3) --from @ --to ${formats}/csv.fmt"
    "type convert char(3) --from ${formats}/csv.fmt --to @"
    "name resolve X --format @"
    "name attr X --format @"
    "schema show ${schema} --format @"
    "schema show @ --format ${formats}/csv.fmt"
    "domain range speed:integer:10:130 --format @ --accept"
    "domain coded surface:integer:1:Paved --format @ --accept")
foreach(special IN LISTS specials)
    get_filename_component(name ${special} NAME)
    foreach(command IN LISTS commands)
        string(REPLACE "@" "${special}" arguments "${command}")
        separate_arguments(arguments UNIX_COMMAND "${arguments}")
        expect_refusal("vyrtool ${arguments}" "${name}" COMMAND ${VYRTOOL} ${arguments})
    endforeach()
endforeach()
# The codecs read standard input: an endless one is cut off with a message.
execute_process(COMMAND ${VYRTOOL} codec encode-user INPUT_FILE /dev/zero TIMEOUT 60
                OUTPUT_QUIET ERROR_VARIABLE said RESULT_VARIABLE status)
if(NOT status EQUAL 2 OR NOT said MATCHES "standard input is larger")
    hostile_fail("vyrtool codec encode-user < /dev/zero: exit ${status}, said: ${said}")
endif()
# Text that is not UTF-8 may be refused or shown with the byte replaced, but
# what is shown must still be JSON.
hostile_run(run AS_USER COMMAND ${VYRTOOL} format show ${work}/latin1.fmt)
string(JSON shown ERROR_VARIABLE invalid GET "${run_out}" format_name)
if(run_broken OR (run_status EQUAL 0 AND invalid) OR (NOT run_status EQUAL 0 AND run_said STREQUAL ""))
    hostile_fail("vyrtool format show (not UTF-8): ${run_outcome} ${invalid}")
endif()

# vyr-ftprops: the workspace itself, then a workspace naming the hostile file
# as a feature file and as a capability file. --accept, so that a workspace
# read by mistake ends at once rather than waiting for a person.
foreach(workspace IN LISTS specials ITEMS ${work}/latin1.json)
    get_filename_component(name ${workspace} NAME)
    expect_refusal("vyr-ftprops ${workspace}" "${name}"
                   COMMAND ${FTPROPS} ${workspace} --edit stations --accept)
endforeach()
set(n 0)
foreach(special IN LISTS specials)
    get_filename_component(name ${special} NAME)
    foreach(entry "\"feature\": \"${special}\", \"format\": \"formats/csv.fmt\""
                  "\"feature\": \"schemas/csv-stations.json\", \"format\": \"${special}\"")
        math(EXPR n "${n} + 1")
        set(workspace ${work}/examples/hostile-${n}.json)
        file(WRITE ${workspace} "{\"feature_types\": [ { ${entry} } ]}\n")
        expect_refusal("vyr-ftprops with ${entry}" "${name}" COMMAND ${FTPROPS} ${workspace} --edit stations --accept)
    endforeach()
endforeach()

# JSON nested 100,000 levels deep, which would run the stack out while it is
# read or freed: as a workspace, as a feature file of a workspace, and as a
# feature file vyrtool shows.
string(REPEAT "[" 100000 opening)
string(REPEAT "]" 100000 closing)
file(WRITE ${work}/deep.json "{\"feature_types\": ${opening}${closing}}\n")
set(deepFeature ${work}/examples/schemas/deep-feature.json)
file(WRITE ${deepFeature} "{\"feature_type\": \"stations\", \"extra\": ${opening}${closing}}\n")
file(WRITE ${work}/examples/deep-entry.json
     "{\"feature_types\": [ { \"feature\": \"schemas/deep-feature.json\", \"format\": \"formats/csv.fmt\" } ]}\n")
expect_refusal("vyr-ftprops on a deeply nested workspace" "deep.json"
               COMMAND ${FTPROPS} ${work}/deep.json --edit stations --accept)
expect_refusal("vyr-ftprops on a deeply nested feature file" "deep-feature.json"
               COMMAND ${FTPROPS} ${work}/examples/deep-entry.json --edit stations --accept)
expect_refusal("vyrtool schema show on a deeply nested feature file" "deep-feature.json"
               COMMAND ${VYRTOOL} schema show ${deepFeature} --format ${formats}/csv.fmt)

# The grid demo with no display: asking for help or a picture must not abort.
foreach(arguments "--help" "--screenshot;${work}/grid.png")
    hostile_run(run TIMEOUT 20 COMMAND ${HOSTILE_NO_DISPLAY} ${GRIDDEMO} ${arguments})
    hostile_first_line(line "${run_said}")
    if(run_broken)
        hostile_fail("vyr-griddemo ${arguments} without a display: ${run_how}: ${line}")
    endif()
endforeach()

# Bad usage ends with 2 (1 is a cancelled dialog's) and says what is wrong.
foreach(arguments "--bogus" "--rows;2000000" "--rows;many")
    expect_refusal("vyr-griddemo ${arguments}" "" COMMAND ${GRIDDEMO} ${arguments})
endforeach()
expect_refusal("vyr-ftprops --bogus" "bogus" COMMAND ${FTPROPS} ${work}/examples/workspace.json --bogus)

# A display left over from a closed session (nothing listens on :97): a
# dialog that needs a person is refused at once, one that ends by itself is
# drawn offscreen; neither aborts.
foreach(arguments "about" "about;--accept")
    hostile_run(run TIMEOUT 20 COMMAND env -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM DISPLAY=:97 ${VYRTOOL} ${arguments})
    hostile_first_line(line "${run_said}")
    if(run_broken OR (arguments STREQUAL "about" AND (run_status EQUAL 0 OR line STREQUAL "")))
        hostile_fail("vyrtool ${arguments} with a dead display: ${run_how}: ${line}")
    endif()
endforeach()

# The geodatabase picker among strangers' folders. /proc as root, whose
# /proc/kmsg waits for the kernel's next message when read: a folder picker
# reads no file. Names that are no UTF-8 (0xFF; 0x82 0xA0, a character in
# CP932) come back byte for byte. A path longer than the caller's buffer,
# whose first 259 bytes name another geodatabase, is refused, not answered
# with that one.
string(ASCII 255 ff)
string(ASCII 130 160 sjis)
set(gdb ${work}/gdb)
file(MAKE_DIRECTORY ${gdb}/bad${ff}name.gdb ${gdb}/city.gdb)
string(LENGTH "${gdb}/city.gdb" length)
math(EXPR slashes "259 - ${length}")
string(REPEAT "/" ${slashes} slashes)
# <code page>|<exit>|<output, or message when the exit is not 0>|<arguments>
foreach(case "|3|not a geodatabase|/proc/sys;--screenshot;${work}/proc.png;--accept"
             "|0|^${gdb}/bad${ff}name.gdb\n$|${gdb}/bad${ff}name.gdb;--must-exist;--accept"
             "|0|^${gdb}/new${ff}.gdb\n$|${gdb}/new${ff}.gdb;--accept"
             "CP932|0|^${gdb}/${sjis}.gdb\n$|${gdb}/${sjis}.gdb;--accept"
             "|3|cut short|${gdb}/city.gdb${slashes}/plain.gdb;--accept")
    string(REGEX MATCH "^([^|]*)\\|([^|]*)\\|([^|]*)\\|(.*)$" parsed "${case}")
    set(codepage "${CMAKE_MATCH_1}")
    set(exit ${CMAKE_MATCH_2})
    set(expected "${CMAKE_MATCH_3}")
    set(arguments ${CMAKE_MATCH_4})
    hostile_run(run TIMEOUT 20 COMMAND env VYR_CODEPAGE=${codepage} ${VYRTOOL} geodb ${arguments})
    set(said "${run_out}")
    if(NOT exit EQUAL 0)
        set(said "${run_said}")
    endif()
    if(run_broken OR NOT run_status EQUAL exit OR NOT "${said}" MATCHES "${expected}")
        hostile_fail("vyrtool geodb ${arguments} (code page \"${codepage}\"): ${run_outcome}")
    endif()
endforeach()

execute_process(COMMAND chmod -R u+rwX ${work})
file(REMOVE_RECURSE ${work})
hostile_finish()
