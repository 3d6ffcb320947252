# Builds the host program under HOST against the installation in PREFIX,
# the way MODE names: "find_package" (a CMake project given the prefix
# alone) or "pkg-config" (one compiler call with the flags pkg-config gives
# for vyrguimfc and Qt6Widgets). Then runs it from WORK on the installed
# examples and checks that it loaded the installation's library, not the
# build tree's, and that OK ended the dialog.
#
# With ROOT, PREFIX is ROOT/usr, where the Debian packages were extracted
# (the library package's control files in ROOT/DEBIAN): pkg-config takes
# ROOT as the system root its /usr stands in, the host runs with ROOT's
# library folder standing in for the system's (the pkg-config build gets no
# search path of its own, as against /usr), and dpkg-shlibdeps must give it
# a versioned dependency on the library package.
#
# CXX and FLAGS are the compiler and the extra compile and link flags of the
# installation's build (a sanitizer build needs its runtime in the host too);
# EXTRA_SOURCES goes into the host as well. GENERATOR is CMake's generator.
# LIBDIR, DATADIR and INSTALL_DIR are the build's folders of an
# installation, relative to its prefix, SOVERSION the libraries' number.
include(${CMAKE_CURRENT_LIST_DIR}/install_common.cmake)
install_require(PREFIX HOST WORK MODE CXX LIBDIR DATADIR INSTALL_DIR SOVERSION)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(RUN_FOLDER ${WORK})

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
    if(ROOT)
        set(ENV{PKG_CONFIG_SYSROOT_DIR} ${ROOT})
        run(${PKG_CONFIG} --cflags --libs vyrguimfc)
        set(pkg_flags "${output}")
        unset(ENV{PKG_CONFIG_SYSROOT_DIR})
        run(${PKG_CONFIG} --cflags --libs Qt6Widgets)
        string(APPEND pkg_flags " ${output}")
    else()
        run(${PKG_CONFIG} --cflags --libs vyrguimfc Qt6Widgets)
        set(pkg_flags "${output}")
    endif()
    string(STRIP "${pkg_flags}" pkg_flags)
    separate_arguments(pkg_flags UNIX_COMMAND "${pkg_flags}")
    set(host ${WORK}/vyr_host)
    # Qt wants position independent code in what links it.
    run(${CXX} -std=c++17 -fPIC -Wall -Wextra -Werror ${flags} ${HOST}/main.cpp ${EXTRA_SOURCES}
        -o ${host} ${pkg_flags})
else()
    message(FATAL_ERROR "MODE is find_package or pkg-config, not ${MODE}")
endif()

if(ROOT)
    set(ENV{LD_LIBRARY_PATH} ${PREFIX}/${LIBDIR})
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

if(ROOT)
    unset(ENV{LD_LIBRARY_PATH})
    # As the host's own Debian package would be made.
    file(WRITE ${WORK}/debian/control "Source: vyr-host\n\nPackage: vyr-host\nArchitecture: any\n")
    run(dpkg-shlibdeps -O -S${ROOT} ${host})
    if(NOT output MATCHES "[=,] *libvyrguimfc0 \\(>= [0-9][^)]*\\)")
        message(FATAL_ERROR "dpkg-shlibdeps gives the host no versioned dependency on libvyrguimfc0:\n${output}")
    endif()
    message(STATUS "${output}")
endif()
