# What the hostile-input scripts share: running a program with a time limit,
# as an ordinary user when the test runs as root (root reads and writes
# everything, so a read-only file would prove nothing), telling a clean
# refusal from a crash, and collecting every failure before reporting, so one
# run shows all that is wrong and a mounted file system is always released.

execute_process(COMMAND id -u OUTPUT_VARIABLE hostile_uid OUTPUT_STRIP_TRAILING_WHITESPACE)
set(HOSTILE_ROOT FALSE)
if(hostile_uid STREQUAL "0")
    set(HOSTILE_ROOT TRUE)
endif()
set(HOSTILE_AS_USER "")
if(HOSTILE_ROOT)
    set(HOSTILE_AS_USER setpriv --reuid=65534 --regid=65534 --clear-groups)
endif()
# Every program the user runs must be able to reach what it is given, so
# the work folder lives in /tmp (the build tree may sit under a private home).
function(hostile_work_folder variable)
    execute_process(COMMAND mktemp -d /tmp/vyr-hostile.XXXXXXXX OUTPUT_VARIABLE made
                    OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "cannot make a work folder in /tmp")
    endif()
    file(CHMOD ${made} DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                             WORLD_READ WORLD_EXECUTE)
    set(${variable} ${made} PARENT_SCOPE)
endfunction()

# hostile_run(<prefix> [AS_USER] [TIMEOUT s] [WORKING_DIRECTORY d] COMMAND ...):
# sets <prefix>_status, _out, _err, _said (standard error without Qt's
# notes), <prefix>_broken to why the run did not end cleanly (a hang, a
# signal, an abort, a sanitizer report) or "", <prefix>_how to that or the
# exit status, and <prefix>_outcome, all of it for a failure report.
function(hostile_run prefix)
    cmake_parse_arguments(ARG "AS_USER" "TIMEOUT;WORKING_DIRECTORY" "COMMAND" ${ARGN})
    set(command ${ARG_COMMAND})
    if(ARG_AS_USER)
        list(PREPEND command ${HOSTILE_AS_USER})
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 10)
    endif()
    set(where "")
    if(ARG_WORKING_DIRECTORY)
        set(where WORKING_DIRECTORY ${ARG_WORKING_DIRECTORY})
    endif()
    execute_process(COMMAND ${command} ${where} TIMEOUT ${ARG_TIMEOUT}
                    OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
    set(broken "")
    if(NOT status MATCHES "^[0-9]+$")
        set(broken "${status}")
    elseif(status GREATER_EQUAL 128)
        set(broken "killed by a signal (exit ${status})")
    elseif(err MATCHES "terminate called|AddressSanitizer|runtime error:")
        set(broken "aborted (exit ${status})")
    endif()
    # Qt's notes about the session are not a program's message.
    string(REGEX REPLACE "\n(QStandardPaths:|qt\\.[a-z.]+:|This plugin does not support)[^\n]*" "" said "\n${err}")
    string(STRIP "${said}" said)
    set(${prefix}_said "${said}" PARENT_SCOPE)
    set(${prefix}_status "${status}" PARENT_SCOPE)
    set(${prefix}_out "${out}" PARENT_SCOPE)
    set(${prefix}_err "${err}" PARENT_SCOPE)
    set(${prefix}_broken "${broken}" PARENT_SCOPE)
    set(how "exit ${status}")
    if(broken)
        set(how "${broken}")
    endif()
    string(STRIP "${out}" out)
    set(${prefix}_how "${how}" PARENT_SCOPE)
    set(${prefix}_outcome "${how}, said \"${out}\" ${said}" PARENT_SCOPE)
endfunction()

# The first line of what a program said, enough to tell the reason.
function(hostile_first_line variable text)
    string(REGEX REPLACE "\n.*" "" line "${text}")
    set(${variable} "${line}" PARENT_SCOPE)
endfunction()

# No display of any kind. coreutils env, not cmake -E env: the latter turns a
# child's abort into exit 1, and an abort is what these cases look for.
set(HOSTILE_NO_DISPLAY env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM)

function(hostile_fail text)
    string(REPLACE ";" " " text "${text}")
    string(REPLACE "\n" "\n  " text "${text}")
    set_property(GLOBAL APPEND PROPERTY HOSTILE_FAILURES "${text}")
endfunction()

function(hostile_finish)
    get_property(failures GLOBAL PROPERTY HOSTILE_FAILURES)
    if(failures)
        list(LENGTH failures count)
        list(JOIN failures "\n  " text)
        message(FATAL_ERROR "${count} hostile input case(s) failed:\n  ${text}")
    endif()
endfunction()

# Everything under a folder as one comparable text: names, kinds, modes,
# sizes, modification times to the nanosecond and link targets.
function(hostile_listing variable folder)
    execute_process(COMMAND find ${folder} -printf "%P %y %m %s %T@ %l\\n"
                    COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C sort OUTPUT_VARIABLE listing)
    set(${variable} "${listing}" PARENT_SCOPE)
endfunction()

# What differs between two listings, line by line.
function(hostile_listing_changes variable before after)
    string(REPLACE "\n" ";" before "${before}")
    string(REPLACE "\n" ";" after "${after}")
    set(gone ${before})
    set(came ${after})
    if(after)
        list(REMOVE_ITEM gone ${after})
    endif()
    if(before)
        list(REMOVE_ITEM came ${before})
    endif()
    list(TRANSFORM gone PREPEND "\n    - ")
    list(TRANSFORM came PREPEND "\n    + ")
    string(REPLACE ";" "" changes "${gone}${came}")
    set(${variable} "${changes}" PARENT_SCOPE)
endfunction()
