# Builds the host program under HOST against the installation in PREFIX,
# the way MODE names: "find_package" (a CMake project given the prefix
# alone) or "pkg-config" (one compiler call with the flags pkg-config gives
# for vyrguimfc and Qt6Widgets). Then runs it from WORK on the installed
# examples and checks that it loaded the installation's library, not the
# build tree's, and that OK ended the dialog.
#
# CXX and FLAGS are the compiler and the extra compile and link flags of the
# installation's build (a sanitizer build needs its runtime in the host too);
# EXTRA_SOURCES goes into the host as well. GENERATOR is CMake's generator.
# LIBDIR, DATADIR and INSTALL_DIR are the build's folders of an
# installation, relative to its prefix, SOVERSION the libraries' number.
foreach(variable IN ITEMS PREFIX HOST WORK MODE CXX LIBDIR DATADIR INSTALL_DIR SOVERSION)
    if("${${variable}}" STREQUAL "")
        message(FATAL_ERROR "${variable} is not set")
    endif()
endforeach()
unset(ENV{VYR_HOME})
unset(ENV{VYR_HOME_OVERRIDE})
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${WORK}
        OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}\nfailed (${status}):\n${output}${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

separate_arguments(flags UNIX_COMMAND "${FLAGS}")
if(MODE STREQUAL "find_package")
    if(NOT GENERATOR)
        set(GENERATOR Ninja)
    endif()
    run(${CMAKE_COMMAND} -S ${HOST} -B ${WORK}/build -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${PREFIX}
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=${CXX} "-DCMAKE_CXX_FLAGS=${FLAGS}"
        "-DCMAKE_EXE_LINKER_FLAGS=${FLAGS}" "-DVYR_HOST_EXTRA_SOURCES=${EXTRA_SOURCES}")
    run(${CMAKE_COMMAND} --build ${WORK}/build)
    set(host ${WORK}/build/vyr_host)
elseif(MODE STREQUAL "pkg-config")
    find_program(PKG_CONFIG pkg-config REQUIRED)
    # Only the installation's own .pc files and the system's: no build tree.
    set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
    run(${PKG_CONFIG} --cflags --libs vyrguimfc Qt6Widgets)
    string(STRIP "${output}" pkg_flags)
    separate_arguments(pkg_flags UNIX_COMMAND "${pkg_flags}")
    set(host ${WORK}/vyr_host)
    # Qt wants position independent code in what links it.
    run(${CXX} -std=c++17 -fPIC -Wall -Wextra -Werror ${flags} ${HOST}/main.cpp ${EXTRA_SOURCES}
        -o ${host} ${pkg_flags})
else()
    message(FATAL_ERROR "MODE is find_package or pkg-config, not ${MODE}")
endif()

run(${host} ${PREFIX}/${DATADIR}/vyr/examples)
file(REAL_PATH ${PREFIX}/${LIBDIR} libraries)
file(REAL_PATH ${PREFIX}/${INSTALL_DIR} installation)
foreach(line IN ITEMS
        "library: ${libraries}/libvyrguimfc.so.${SOVERSION}"
        "encoded: main<space>street<comma><space>5<space><dollar>"
        "pressing OK in \"Feature Type Properties\""
        "installation: ${installation}/"
        "accepted: ROADS")
    string(FIND "${output}" "${line}\n" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "the host built through ${MODE} did not print \"${line}\":\n${output}")
    endif()
endforeach()
message(STATUS "built through ${MODE} against ${PREFIX} and ran:\n${output}")
