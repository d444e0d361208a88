# SPDX-License-Identifier: MIT
# Debian packages, one for each component of the installation. scripts/package.sh makes them.

set(release 1)
set(runtimePackage libkwifunctionzel${PROJECT_VERSION_MAJOR})
set(sameRuntime "${runtimePackage} (= ${PROJECT_VERSION}-${release})")

# Debian's tools look for documents in this form alone. Without name and time in the archive the
# same text gives the same bytes.
find_program(KWI_GZIP gzip REQUIRED)
function(kwi_compress document compressed)
    execute_process(COMMAND ${KWI_GZIP} -9 --no-name --stdout ${PROJECT_SOURCE_DIR}/${document}
                    OUTPUT_FILE ${CMAKE_BINARY_DIR}/packages/${compressed}
                    COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${document})
endfunction()
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
kwi_compress(CHANGELOG.md changelog.gz)
kwi_compress(docs/changelog.Debian changelog.Debian.gz)

# The first line of a description is what lists of packages show. Every package states its licence
# and tells its history where Debian's tools look for them.
macro(kwi_package component name section description)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${description}")
    install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} RENAME copyright
            COMPONENT ${component})
    install(FILES ${CMAKE_BINARY_DIR}/packages/changelog.gz
                  ${CMAKE_BINARY_DIR}/packages/changelog.Debian.gz
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endmacro()

kwi_package(Library ${runtimePackage} libs "function database of a handheld measuring instrument
One tree with all settings and results of the instrument, which checks writes
and keeps in step what depends on them. This package holds the library.")
kwi_package(Development libkwifunctionzel-dev libdevel
            "headers of the function database of a measuring instrument
Headers, CMake package and pkg-config file of libKWIFunctionZEL.")
kwi_package(Tools zelctl utils "settings of a measuring instrument on the command line
Shows and changes settings, saves, recalls and compares them, and runs
scripts, by the rules of libKWIFunctionZEL.")
kwi_compress(docs/zelctl.1 zelctl.1.gz)
install(FILES ${CMAKE_BINARY_DIR}/packages/zelctl.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
        COMPONENT Tools)
kwi_package(Service libkwifunctionzel-service${PROJECT_VERSION_MAJOR} libs
            "remote control of a measuring instrument's settings
Serves a tree of libKWIFunctionZEL to other processes: remote control by TCP as
instruments have it (IEEE 488.2, SCPI-1999).")
kwi_package(ServiceDevelopment libkwifunctionzel-service-dev libdevel
            "header of the remote control of a measuring instrument's settings
Header, CMake component and pkg-config file of libKWIFunctionZELService.")
kwi_package(Host zelhost utils "measuring instrument's settings as a service
Holds a tree of libKWIFunctionZEL and serves it by remote control, to this
machine alone unless something else is said. The unit is not enabled: systemctl
enable --now zelhost does so.")
kwi_compress(docs/zelhost.1 zelhost.1.gz)
install(FILES ${CMAKE_BINARY_DIR}/packages/zelhost.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
        COMPONENT Host)
if(KWI_BUILD_QT)
    kwi_package(Qt libkwifunctionzel-qt${PROJECT_VERSION_MAJOR} libs
                "settings of a measuring instrument for user interfaces of Qt
Objects with notifying properties and item models for a tree of
libKWIFunctionZEL, and one poll for all of them.")
    kwi_package(QtDevelopment libkwifunctionzel-qt-dev libdevel
                "headers of the Qt adapter of a measuring instrument's settings
Headers and CMake component of libKWIFunctionZELQt.")
    kwi_package(Qml qml6-module-kwifunctionzel libs
                "settings of a measuring instrument in pages of Qt Quick
The QML module KWIFunctionZEL: settings, results, actions and containers of
libKWIFunctionZEL by their paths.")
endif()
kwi_package(Documents libkwifunctionzel-doc doc "settings reference of a measuring instrument
Every setting of libKWIFunctionZEL with type, unit, limits and default, guides
and examples, as Markdown and source.")

if(KWI_BUILD_PYTHON)
    kwi_package(Python python3-kwifunctionzel python "function database of a measuring instrument for Python
Settings and results of the instrument as objects of Python, with
calculations, label lists, samples and stubs for type checkers.")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_NAME kwifunctionzel)
set(CPACK_PACKAGE_VENDOR "libKWIFunctionZEL developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # it would stand before each description
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_COMPONENTS_ALL Library Development Service ServiceDevelopment Host Tools Documents)
if(KWI_BUILD_QT)
    list(APPEND CPACK_COMPONENTS_ALL Qt QtDevelopment Qml)
endif()
if(KWI_BUILD_PYTHON)
    list(APPEND CPACK_COMPONENTS_ALL Python)
endif()
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
# Folders have the same rights whatever the umask of whoever packs.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
    GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "libKWIFunctionZEL developers <developers@localhost>")
set(CPACK_DEBIAN_PACKAGE_RELEASE ${release})
set(CPACK_DEBIAN_PACKAGE_SOURCE kwifunctionzel)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
file(WRITE ${CMAKE_BINARY_DIR}/packages/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/packages/triggers)
set(CPACK_DEBIAN_SERVICE_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_SERVICE_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/packages/triggers)
set(CPACK_DEBIAN_SERVICE_PACKAGE_DEPENDS ${sameRuntime})
if(KWI_PACK_RELOCATIONS AND KWI_HAS_PACKED_RELOCATIONS)
    # No symbol tells of packed relocations, so dpkg-shlibdeps does not see what they need.
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "libc6 (>= 2.36)")
endif()

if(KWI_QT_MAJOR EQUAL 6)
    set(qtDevelopment qt6-base-dev)
else()
    set(qtDevelopment qtbase5-dev)
endif()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${sameRuntime}, ${qtDevelopment}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libkwifunctionzel-doc)

set(sameService
    "libkwifunctionzel-service${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION}-${release})")
set(CPACK_DEBIAN_SERVICEDEVELOPMENT_PACKAGE_DEPENDS
    "${sameService}, libkwifunctionzel-dev (= ${PROJECT_VERSION}-${release})")
set(CPACK_DEBIAN_HOST_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS "${sameService}, ${sameRuntime}")

set(sameQt "libkwifunctionzel-qt${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION}-${release})")
set(CPACK_DEBIAN_QT_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_QT_PACKAGE_DEPENDS "${sameRuntime}")
set(CPACK_DEBIAN_QTDEVELOPMENT_PACKAGE_DEPENDS
    "${sameQt}, libkwifunctionzel-dev (= ${PROJECT_VERSION}-${release})")
set(CPACK_DEBIAN_QML_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_QML_PACKAGE_DEPENDS "${sameQt}")

set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR} ${CMAKE_BINARY_DIR}/service
    ${CMAKE_BINARY_DIR}/qt)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS ${sameRuntime})

# The module is for one version of Python.
if(KWI_BUILD_PYTHON)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
        "${sameRuntime}, python3 (>= ${KWI_PYTHON_VERSION}), python3 (<< ${KWI_PYTHON_NEXT})")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS python3-numpy)
    set(CPACK_DEBIAN_PYTHON_DEBUGINFO_PACKAGE ON)
endif()

set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_ARCHITECTURE all)

# What a core dump of the instrument needs to be read: the debug information of this very build.
set(CPACK_DEBIAN_LIBRARY_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_SERVICE_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_HOST_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_TOOLS_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_QT_DEBUGINFO_PACKAGE ON)

include(CPack)
