# What the installation tests share: the variables a script is given, and a
# way to run a command that stops the test with its output when it fails.

# Stops the script unless each named variable has a value.
function(install_require)
    foreach(variable IN LISTS ARGN)
        if("${${variable}}" STREQUAL "")
            message(FATAL_ERROR "${variable} is not set")
        endif()
    endforeach()
endfunction()

# The caller's VYR_HOME would pick the installation the test is to find.
unset(ENV{VYR_HOME})
unset(ENV{VYR_HOME_OVERRIDE})

# Runs the command (in RUN_FOLDER when the script set one); a failure stops
# the test with the command's output. Its standard output is left in
# `output`.
function(run)
    set(folder)
    if(RUN_FOLDER)
        set(folder WORKING_DIRECTORY ${RUN_FOLDER})
    endif()
    execute_process(COMMAND ${ARGN} ${folder} OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}\nfailed (${status}):\n${output}${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()
