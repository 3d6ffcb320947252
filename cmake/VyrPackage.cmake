# What a host's developer builds against.
#
# A host finds the installation with find_package(vyrguimfc) (the imported
# targets vyrguimfc::vyrguimfc, which brings the engine along, and
# vyrguimfc::engine) or with pkg-config (vyrguimfc, vyr). The earlier
# find_package(vyr) with vyr::vyrguimfc and vyr::engine still works.
# The Debian packages are made from an installation of the build tree by
# debian/ (scripts/package.sh).

include(CMakePackageConfigHelpers)

# The SONAME's number goes up with every release that changes or removes an
# export (before 1.0 a minor release may); the packages' symbols file
# (debian/libvyrguimfc0.symbols) lists every export, and packaging fails
# when the libraries' differ from it.
set(VYR_SOVERSION 0)

# vyr_shared_library(<target>): one of the two libraries a host links,
# installed into the shared library folder as libX.so.<version> with its
# SONAME link and the unversioned link for developers, and exported.
function(vyr_shared_library target)
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${VYR_SOVERSION}
        INSTALL_RPATH "${VYR_LIBRARY_RPATH}")
    install(TARGETS ${target} EXPORT vyrguimfcTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
endfunction()

set(VYR_PACKAGE_BUILD_DIR ${CMAKE_BINARY_DIR}/package-config)
# Before 1.0 a minor release may change the exports: the version files
# accept the same minor release only.
foreach(package IN ITEMS vyrguimfc vyr)
    set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${package})
    configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/package/${package}Config.cmake.in
        ${VYR_PACKAGE_BUILD_DIR}/${package}Config.cmake
        INSTALL_DESTINATION ${config_dir})
    write_basic_package_version_file(${VYR_PACKAGE_BUILD_DIR}/${package}ConfigVersion.cmake
        COMPATIBILITY SameMinorVersion)
    install(FILES ${VYR_PACKAGE_BUILD_DIR}/${package}Config.cmake ${VYR_PACKAGE_BUILD_DIR}/${package}ConfigVersion.cmake
        DESTINATION ${config_dir})
endforeach()
install(EXPORT vyrguimfcTargets NAMESPACE vyrguimfc:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vyrguimfc)

# The .pc files name the prefix they are installed under, which is known only
# when installing (cmake --install --prefix, or the packages' /usr), so they
# are written then. Installed anywhere but /usr, whose library folder the
# loader searches anyway, they give a host the RUNPATH it needs to start.
foreach(module IN ITEMS vyr vyrguimfc)
    install(CODE "
        set(VYR_PC_PREFIX \"\${CMAKE_INSTALL_PREFIX}\")
        set(VYR_PC_LIBDIR \"${CMAKE_INSTALL_LIBDIR}\")
        set(VYR_PC_INCLUDEDIR \"${CMAKE_INSTALL_INCLUDEDIR}\")
        set(VYR_PC_VERSION \"${PROJECT_VERSION}\")
        set(VYR_PC_RPATH \"-Wl,-rpath,\\\${libdir} \")
        if(VYR_PC_PREFIX STREQUAL \"/usr\")
            set(VYR_PC_RPATH \"\")
        endif()
        set(pc \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig/${module}.pc\")
        message(STATUS \"Installing: \${pc}\")
        configure_file(\"${CMAKE_CURRENT_LIST_DIR}/package/${module}.pc.in\" \"\${pc}\" @ONLY)
        list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${pc}\")")
endforeach()
