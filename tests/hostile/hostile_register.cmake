# vyrtool register and unregister in configuration folders that fight back:
# links planted on the way to the settings file, a folder the user may not
# write into, a configuration folder that is not there yet. A link is
# refused by name, neither followed nor removed; unregistering with nothing
# registered succeeds without making or removing anything; a failure says
# why.
#
#   cmake -DVYRTOOL=... -P hostile_register.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/hostile_common.cmake)
hostile_work_folder(work)

set(victim_text "[Kept]\nk=v\n")
file(WRITE ${work}/victim.conf "${victim_text}")
file(MAKE_DIRECTORY ${work}/elsewhere)

# expect_refused(<what> <before>): the last run failed, named `link` and
# changed nothing under the work folder.
function(expect_refused what before)
    hostile_listing(after ${work})
    hostile_listing_changes(changes "${before}" "${after}")
    if(NOT run_status EQUAL 1 OR NOT run_said MATCHES "${link}: is a symbolic link" OR changes)
        hostile_fail("${what}: ${run_outcome}${changes}")
    endif()
endfunction()

# Links planted below the configuration folder: on the settings file, on the
# system's folder, and on the shared folder an earlier version wrote into
# (which only unregistering reads).
foreach(planted "vyr/Classes.conf" "vyr" "Classes")
    string(MAKE_C_IDENTIFIER "${planted}" name)
    set(config ${work}/${name})
    set(link ${config}/${planted})
    get_filename_component(parent ${link} DIRECTORY)
    file(MAKE_DIRECTORY ${parent})
    if(planted MATCHES "conf$")
        file(CREATE_LINK ${work}/victim.conf ${link} SYMBOLIC)
    else()
        file(CREATE_LINK ${work}/elsewhere ${link} SYMBOLIC)
        file(WRITE ${work}/elsewhere/TypeLib.conf "[{4EAA3CF3-CD07-49E2-B8F2-91FB4EDA8115}/1.0]\n@=kept\n")
    endif()
    if(planted STREQUAL "Classes")
        # The earlier place may be another program's: its link is left alone
        # and said, and the records of the current place still all go.
        hostile_run(run COMMAND env XDG_CONFIG_HOME=${config} ${VYRTOOL} register --user)
        hostile_listing(before ${work})
        hostile_run(run COMMAND env XDG_CONFIG_HOME=${config} ${VYRTOOL} unregister --user)
        hostile_listing(after ${work})
        hostile_listing_changes(changes "${before}" "${after}")
        if(NOT run_status EQUAL 0 OR NOT run_said MATCHES "${link}: is a symbolic link" OR EXISTS ${config}/vyr
           OR NOT changes MATCHES "vyr/Classes.conf" OR changes MATCHES "elsewhere|victim")
            hostile_fail("unregister --user with the earlier Classes a link: ${run_outcome}${changes}")
        endif()
        continue()
    endif()
    foreach(command register unregister)
        hostile_listing(before ${work})
        hostile_run(run COMMAND env XDG_CONFIG_HOME=${config} ${VYRTOOL} ${command} --user)
        expect_refused("${command} --user with ${planted} a link" "${before}")
    endforeach()
endforeach()

# The configuration folder itself a link that another user made: root must
# not register into wherever it leads.
if(HOSTILE_ROOT)
    file(MAKE_DIRECTORY ${work}/theirs ${work}/private)
    execute_process(COMMAND chown 65534:65534 ${work}/theirs)
    set(link ${work}/theirs/config)
    execute_process(COMMAND ${HOSTILE_AS_USER} ln -s ${work}/private ${link})
    hostile_listing(before ${work})
    hostile_run(run COMMAND env XDG_CONFIG_HOME=${link} ${VYRTOOL} register --user)
    expect_refused("register --user into another user's link" "${before}")
endif()

# A machine folder the user may not write into: unregistering what is not
# there succeeds and writes nothing; registering says why it cannot.
set(machine ${work}/etc)
file(MAKE_DIRECTORY ${machine})
if(NOT HOSTILE_ROOT)
    file(CHMOD ${machine} DIRECTORY_PERMISSIONS OWNER_READ OWNER_EXECUTE)
endif()
hostile_listing(before ${work})
hostile_run(run AS_USER COMMAND env XDG_CONFIG_DIRS=${machine} ${VYRTOOL} unregister)
hostile_listing(after ${work})
hostile_listing_changes(changes "${before}" "${after}")
if(NOT run_status EQUAL 0 OR changes)
    hostile_fail("unregister with nothing registered in a folder the user may not write: ${run_outcome}${changes}")
endif()
hostile_run(run AS_USER COMMAND env XDG_CONFIG_DIRS=${machine} ${VYRTOOL} register)
hostile_listing(after ${work})
hostile_listing_changes(changes "${before}" "${after}")
if(NOT run_status EQUAL 1 OR NOT run_said MATCHES "${machine}[^\n]*Permission denied" OR changes)
    hostile_fail("register in a folder the user may not write: ${run_outcome}${changes}")
endif()

# No configuration folder yet: unregistering makes none.
hostile_run(run COMMAND env XDG_CONFIG_HOME=${work}/missing/config ${VYRTOOL} unregister --user)
if(NOT run_status EQUAL 0 OR EXISTS ${work}/missing)
    hostile_fail("unregister --user without a configuration folder: ${run_outcome}, made ${work}/missing")
endif()

file(REMOVE_RECURSE ${work})
hostile_finish()
