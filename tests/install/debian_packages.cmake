# Makes the Debian packages of the build tree BUILD into WORK with
# scripts/package.sh of SOURCE (nothing is built) and checks them as
# Debian's tools and a user would: lintian reports no error or warning,
# every ELF file is hardened, the desktop entry and the AppStream metadata
# are valid, each package is of release VERSION with the dependencies its
# symbols and shlibs give, and, extracted into WORK/root, no link dangles,
# no search path reaches the working directory (SEARCH_PATHS is that check's
# script) and the programs run from there. The extracted root, with the
# library package's control files in root/DEBIAN, is what the hosts of
# install_host.cmake are then built against.
# LIBDIR is the build's library folder relative to the prefix.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/install_common.cmake)
install_require(SOURCE BUILD WORK VERSION SEARCH_PATHS LIBDIR)
file(REMOVE_RECURSE ${WORK})

# No -dbgsym packages: making them takes longer than everything else here,
# and nothing below looks at them.
set(ENV{DEB_BUILD_OPTIONS} noautodbgsym)
run(${SOURCE}/scripts/package.sh ${BUILD} ${WORK})
set(packages libvyrguimfc0 libvyrguimfc-dev vyr-tools)
file(GLOB debs ${WORK}/*.deb)
list(LENGTH debs count)
if(NOT count EQUAL 3)
    message(FATAL_ERROR "made ${count} packages, not ${packages}: ${debs}")
endif()
set(root ${WORK}/root)
foreach(package IN LISTS packages)
    file(GLOB deb_${package} ${WORK}/${package}_*.deb)
    run(dpkg-deb --field ${deb_${package}} Version Depends)
    set(fields_${package} "${output}")
    if(NOT output MATCHES "^Version: ${VERSION}\n")
        message(FATAL_ERROR "${package} is not of release ${VERSION}:\n${output}")
    endif()
    run(dpkg-deb --extract ${deb_${package}} ${root})
endforeach()
run(dpkg-deb --control ${deb_libvyrguimfc0} ${root}/DEBIAN)

# The programs depend on the library release that brought the exports they
# use (the symbols file), the headers on the very library they come with,
# the library on the versions of Debian's libraries it was built against.
foreach(dependency IN ITEMS "vyr-tools|libvyrguimfc0 (>= ${VERSION})" "libvyrguimfc-dev|libvyrguimfc0 (= ${VERSION})"
        "libvyrguimfc0|libc6 (>=" "libvyrguimfc0|libstdc++6 (>=" "libvyrguimfc0|libqt6widgets6 (>="
        "libvyrguimfc0|libqt6uitools6 (>=" "libvyrguimfc0|libtcl8.6 (>=")
    string(REPLACE "|" ";" dependency "${dependency}")
    list(POP_FRONT dependency package)
    string(FIND "${fields_${package}}" "${dependency}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "${package} lacks the dependency ${dependency}:\n${fields_${package}}")
    endif()
endforeach()

file(GLOB changes ${WORK}/*.changes)
execute_process(COMMAND lintian --fail-on error,warning ${changes}
    OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "lintian failed (${status}):\n${output}${errors}")
endif()
message(STATUS "lintian: no error or warning")

file(GLOB_RECURSE files LIST_DIRECTORIES false ${root}/usr/*)
set(elf_files)
foreach(file IN LISTS files)
    if(IS_SYMLINK ${file})
        if(NOT EXISTS ${file})
            file(READ_SYMLINK ${file} target)
            message(FATAL_ERROR "${file} leads to the missing ${target}")
        endif()
        continue()
    endif()
    file(READ ${file} magic LIMIT 4 HEX)
    if(magic STREQUAL "7f454c46")
        list(APPEND elf_files ${file})
    endif()
endforeach()
# Without control flow protection, as Debian 12 builds. libqvyrext.so has
# no function with an array or a local whose address is taken, the ones the
# strong stack protector guards, so nothing in it calls the check.
list(FILTER elf_files EXCLUDE REGEX "/libqvyrext\\.so$")
run(hardening-check --quiet --nocfprotection ${elf_files})
run(hardening-check --quiet --nocfprotection --nostackprotector ${root}/usr/${LIBDIR}/vyr/libqvyrext.so)
list(LENGTH elf_files count)
math(EXPR count "${count} + 1")
message(STATUS "hardening-check: ${count} ELF files hardened")
file(GLOB desktop_entries ${root}/usr/share/applications/*.desktop)
file(GLOB metadata ${root}/usr/share/metainfo/*.xml)
run(desktop-file-validate ${desktop_entries})
run(appstreamcli validate --no-net ${metadata})
file(STRINGS ${metadata} release REGEX "<release " LIMIT_COUNT 1)
if(NOT release MATCHES "version=\"${VERSION}\"")
    message(FATAL_ERROR "the newest release in ${metadata} is not ${VERSION}: ${release}")
endif()
run(${CMAKE_COMMAND} -DROOTS=${root}/usr -P ${SEARCH_PATHS})

# The installed programs themselves, started from a folder of their own.
set(work ${WORK}/run)
file(COPY ${root}/usr/share/vyr/examples DESTINATION ${work})
foreach(program IN ITEMS vyrtool vyr-ftprops vyr-griddemo)
    if(IS_SYMLINK ${root}/usr/bin/${program})
        message(FATAL_ERROR "/usr/bin/${program} is a link, not the program")
    endif()
    execute_process(COMMAND ${root}/usr/bin/${program} --version WORKING_DIRECTORY ${work}
        OUTPUT_VARIABLE output RESULT_VARIABLE status)
    if(NOT status EQUAL 0 OR NOT output STREQUAL "${program} ${VERSION}\n")
        message(FATAL_ERROR "${program} --version: status ${status}, \"${output}\"")
    endif()
endforeach()
execute_process(COMMAND ${root}/usr/bin/vyr-ftprops examples/workspace.json --edit ROADS --screenshot roads.png --accept
    WORKING_DIRECTORY ${work} OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT EXISTS ${work}/roads.png)
    message(FATAL_ERROR "the installed vyr-ftprops: status ${status}\n${output}${errors}")
endif()
message(STATUS "${packages} of ${VERSION}: lintian clean, hardened, installed programs run")
