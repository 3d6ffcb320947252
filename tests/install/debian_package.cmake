# Packages the build tree BUILD for Debian with CPack (without building
# anything) into WORK, and checks what a user of the package gets: its
# dependencies found by dpkg-shlibdeps, the programs on PATH, the files for
# hosts naming /usr, and no library search path that could reach the
# working directory (SEARCH_PATHS is that check's script).
# BINDIR, LIBDIR, DATADIR and INSTALL_DIR are the build's folders of an
# installation, relative to its prefix.
foreach(variable IN ITEMS BUILD WORK SEARCH_PATHS BINDIR LIBDIR DATADIR INSTALL_DIR)
    if(NOT ${variable})
        message(FATAL_ERROR "${variable} is not set")
    endif()
endforeach()
file(REMOVE_RECURSE ${WORK})

function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}\nfailed (${status}):\n${output}${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

get_filename_component(cmake_bin ${CMAKE_COMMAND} DIRECTORY)
find_program(CPACK cpack HINTS ${cmake_bin} REQUIRED)
find_program(DPKG_DEB dpkg-deb REQUIRED)
run(${CPACK} -G DEB --config ${BUILD}/CPackConfig.cmake -B ${WORK})
file(GLOB packages ${WORK}/*.deb)
list(LENGTH packages count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "cpack made ${count} packages: ${packages}")
endif()

run(${DPKG_DEB} --field ${packages} Package Depends)
message(STATUS "${output}")
foreach(dependency IN ITEMS libc6 libstdc\\+\\+6 libqt6core6 libqt6gui6 libqt6widgets6 libqt6uitools6 libtcl8.6)
    if(NOT output MATCHES "Depends:.*[ ,]${dependency} \\(>= [0-9]")
        message(FATAL_ERROR "the package does not depend on a version of ${dependency}:\n${output}")
    endif()
endforeach()

set(root ${WORK}/root)
run(${DPKG_DEB} --extract ${packages} ${root})
foreach(program IN ITEMS vyrtool vyr-ftprops vyr-griddemo)
    set(link ${root}/usr/${BINDIR}/${program})
    file(READ_SYMLINK ${link} target)
    file(REAL_PATH ${link} resolved)
    file(REAL_PATH ${root}/usr/${INSTALL_DIR}/${program} expected)
    if(IS_ABSOLUTE "${target}" OR NOT resolved STREQUAL expected OR NOT EXISTS ${expected})
        message(FATAL_ERROR "/usr/${BINDIR}/${program} leads to \"${target}\", not to the installed program")
    endif()
endforeach()
foreach(file IN ITEMS ${LIBDIR}/cmake/vyr/vyrConfig.cmake ${LIBDIR}/cmake/vyr/vyrConfigVersion.cmake
        ${LIBDIR}/cmake/vyr/vyrTargets.cmake include/vyrguimfc/vyrguimfc.h ${INSTALL_DIR}/libvyrguimfc.so
        ${INSTALL_DIR}/libvyr.so ${INSTALL_DIR}/res/vyr_res.rcc ${DATADIR}/vyr/examples/workspace.json)
    if(NOT EXISTS ${root}/usr/${file})
        message(FATAL_ERROR "the package lacks /usr/${file}")
    endif()
endforeach()
foreach(module IN ITEMS vyr vyrguimfc)
    file(STRINGS ${root}/usr/${LIBDIR}/pkgconfig/${module}.pc prefix REGEX "^prefix=")
    if(NOT prefix STREQUAL "prefix=/usr")
        message(FATAL_ERROR "${module}.pc says \"${prefix}\", not prefix=/usr")
    endif()
endforeach()
run(${CMAKE_COMMAND} -DROOTS=${root}/usr -P ${SEARCH_PATHS})
message(STATUS "${packages}: dependencies, programs, host files and search paths as they should be")
