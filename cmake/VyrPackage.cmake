# What a host's developer builds against, and the Debian package.
#
# A host finds the installation with find_package(vyr) (the exported targets
# vyr::engine and vyr::vyrguimfc) or with pkg-config (vyr, vyrguimfc). The
# libraries stay in the installation directory <libdir>/vyr/ beside the
# resources they locate from their own folder; both ways give the linker that
# folder, and pkg-config also the absolute RUNPATH a host needs to start.

include(CMakePackageConfigHelpers)

set(VYR_CMAKE_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/vyr)
set(VYR_PACKAGE_BUILD_DIR ${CMAKE_BINARY_DIR}/package-config)

install(EXPORT vyrTargets NAMESPACE vyr:: DESTINATION ${VYR_CMAKE_CONFIG_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/package/vyrConfig.cmake.in
    ${VYR_PACKAGE_BUILD_DIR}/vyrConfig.cmake
    INSTALL_DESTINATION ${VYR_CMAKE_CONFIG_DIR}
    PATH_VARS VYR_INSTALL_DIR)
# Before 1.0 a minor release may change the exports.
write_basic_package_version_file(${VYR_PACKAGE_BUILD_DIR}/vyrConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${VYR_PACKAGE_BUILD_DIR}/vyrConfig.cmake ${VYR_PACKAGE_BUILD_DIR}/vyrConfigVersion.cmake
    DESTINATION ${VYR_CMAKE_CONFIG_DIR})

# The .pc files name the prefix they are installed under, which is known only
# when installing (cmake --install --prefix, or the package's /usr), so they
# are written then.
foreach(module IN ITEMS vyr vyrguimfc)
    install(CODE "
        set(VYR_PC_PREFIX \"\${CMAKE_INSTALL_PREFIX}\")
        set(VYR_PC_LIBDIR \"${CMAKE_INSTALL_LIBDIR}\")
        set(VYR_PC_INCLUDEDIR \"${CMAKE_INSTALL_INCLUDEDIR}\")
        set(VYR_PC_INSTALL_DIR \"${VYR_INSTALL_DIR}\")
        set(VYR_PC_VERSION \"${PROJECT_VERSION}\")
        set(pc \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig/${module}.pc\")
        message(STATUS \"Installing: \${pc}\")
        configure_file(\"${CMAKE_CURRENT_LIST_DIR}/package/${module}.pc.in\" \"\${pc}\" @ONLY)
        list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${pc}\")")
endforeach()

# The Debian package (cpack -G DEB): everything under /usr, binaries
# stripped, and the libraries it needs from Debian found by dpkg-shlibdeps.
# The installation runs with DESTDIR so that CMAKE_INSTALL_PREFIX is /usr
# while installing and the .pc files say so.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vyr)
set(CPACK_PACKAGE_VENDOR "Quenbry Inc.")
set(CPACK_PACKAGE_CONTACT "vyr maintainers <vyr@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION "The dialog library libvyrguimfc.so with the stand-in engine libvyr.so, \
its outside services, the vyrtool, vyr-ftprops and vyr-griddemo programs, \
the headers, CMake and pkg-config files for hosts, and example formats and workspaces.")
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
