# SPDX-License-Identifier: MIT
# What an application needs to build against the library and to run with it, in components: Library
# to run it, Development to build against it, Tools, Documents; Service, ServiceDevelopment and Host
# where the service is built; Qt, QtDevelopment and Qml where the adapter is.

include(CMakePackageConfigHelpers)

set(installedHeaders ${CMAKE_INSTALL_INCLUDEDIR}/KWIFunctionZEL)
set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/KWIFunctionZEL)

install(TARGETS KWIFunctionZEL EXPORT KWIFunctionZELTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
                COMPONENT Library NAMELINK_COMPONENT Development)
install(DIRECTORY ifc/ ${KWI_GENERATED_DIR}/ifc/ DESTINATION ${installedHeaders}
        COMPONENT Development FILES_MATCHING PATTERN "*.h")
# Placed to each other as in the source, so that links from one to the other hold.
install(DIRECTORY ${KWI_GENERATED_DIR}/docs/settings DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs
        COMPONENT Documents)
install(DIRECTORY docs/settings/couplings DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs/settings
        COMPONENT Documents FILES_MATCHING PATTERN "*.md" PATTERN "*.svg")
if(TARGET kwi_site)
    install(DIRECTORY ${KWI_SITE_DIR} DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documents)
endif()
file(GLOB documents CONFIGURE_DEPENDS docs/*.md docs/openapi.json)
install(DIRECTORY docs/guides DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT Documents)
install(FILES ${documents} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT Documents)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documents)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT Documents)

install(EXPORT KWIFunctionZELTargets NAMESPACE KWIFunctionZEL:: DESTINATION ${packageDir}
        COMPONENT Development)
configure_package_config_file(cmake/KWIFunctionZELConfig.cmake.in KWIFunctionZELConfig.cmake
                              INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(KWIFunctionZELConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KWIFunctionZELConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/KWIFunctionZELConfigVersion.cmake
        DESTINATION ${packageDir} COMPONENT Development)

# Relative as in the CMake package: the prefix is known when it is installed, not before.
file(RELATIVE_PATH prefixFromPkgConfig ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
     ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/KWIFunctionZEL.pc.in KWIFunctionZEL.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KWIFunctionZEL.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)

if(TARGET zelctl)
    # The installed program finds the library beside it, wherever the two are put.
    file(RELATIVE_PATH libraryFromProgram ${CMAKE_INSTALL_FULL_BINDIR}
         ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(zelctl PROPERTIES INSTALL_RPATH "\$ORIGIN/${libraryFromProgram}")
    install(TARGETS zelctl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Tools)
    install(FILES tools/zelctl/zelctl.bash RENAME zelctl COMPONENT Tools
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    if(NOT KWI_DEBIAN_PACKAGES) # they compress it
        install(FILES docs/zelctl.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Tools)
    endif()
endif()

if(TARGET KWIFunctionZELService)
    set_target_properties(KWIFunctionZELService PROPERTIES INSTALL_RPATH "\$ORIGIN")
    install(TARGETS KWIFunctionZELService EXPORT KWIFunctionZELServiceTargets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
                    COMPONENT Service NAMELINK_COMPONENT ServiceDevelopment)
    install(FILES service/KWService.h DESTINATION ${installedHeaders}
            COMPONENT ServiceDevelopment)
    install(EXPORT KWIFunctionZELServiceTargets NAMESPACE KWIFunctionZEL::
            DESTINATION ${packageDir} COMPONENT ServiceDevelopment)
    configure_file(cmake/KWIFunctionZELService.pc.in KWIFunctionZELService.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KWIFunctionZELService.pc
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT ServiceDevelopment)

    file(RELATIVE_PATH libraryFromProgram ${CMAKE_INSTALL_FULL_BINDIR}
         ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(zelhost PROPERTIES INSTALL_RPATH "\$ORIGIN/${libraryFromProgram}")
    install(TARGETS zelhost RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Host)
    configure_file(service/zelhost/zelhost.service.in zelhost.service @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zelhost.service DESTINATION lib/systemd/system
            COMPONENT Host)
    if(NOT KWI_DEBIAN_PACKAGES)
        install(FILES docs/zelhost.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Host)
    endif()
endif()

if(TARGET KWIFunctionZELQt)
    set_target_properties(KWIFunctionZELQt PROPERTIES INSTALL_RPATH "\$ORIGIN")
    install(TARGETS KWIFunctionZELQt EXPORT KWIFunctionZELQtTargets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
                    COMPONENT Qt NAMELINK_COMPONENT QtDevelopment)
    file(GLOB qtHeaders CONFIGURE_DEPENDS qt/KWQt*.h)
    install(FILES ${qtHeaders} DESTINATION ${installedHeaders} COMPONENT QtDevelopment)
    install(EXPORT KWIFunctionZELQtTargets NAMESPACE KWIFunctionZEL::
            DESTINATION ${packageDir} COMPONENT QtDevelopment)
endif()
if(TARGET kwifunctionzelqml)
    set(qmlModule ${CMAKE_INSTALL_LIBDIR}/qt6/qml/KWIFunctionZEL) # where Debian's engine looks
    set_target_properties(kwifunctionzelqml PROPERTIES INSTALL_RPATH "\$ORIGIN/../../..")
    install(TARGETS kwifunctionzelqml LIBRARY DESTINATION ${qmlModule} COMPONENT Qml)
    install(FILES qt/qml/qmldir DESTINATION ${qmlModule} COMPONENT Qml)
endif()

if(KWI_DEBIAN_PACKAGES)
    include(cmake/Packages.cmake)
endif()
