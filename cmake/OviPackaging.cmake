# What cpack makes of the installed tree: for Linux an archive that runs from wherever it is
# unpacked, and Debian packages, one for each component; for Windows an archive.
# scripts/package.sh makes them all and tries them.
set(OVICORE_PACKAGE_CONTACT "The OviCore authors <authors@ovicore.invalid>" CACHE STRING
    "Maintainer named in packages: a name and, in angle brackets, a mail address")

set(CPACK_PACKAGE_NAME ovicore)
set(CPACK_PACKAGE_VENDOR "The OviCore authors")
set(CPACK_PACKAGE_CONTACT ${OVICORE_PACKAGE_CONTACT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/docs/install.md)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/OviPackageContents.cmake)

if(WIN32)
    set(CPACK_PACKAGE_FILE_NAME ovicore-${PROJECT_VERSION}-windows-x64)
    set(CPACK_GENERATOR ZIP)
    include(CPack)
    return()
endif()

set(CPACK_PACKAGE_FILE_NAME ovicore-${PROJECT_VERSION}-linux-x64)
set(CPACK_GENERATOR TGZ DEB)

# ----------------------------------------------------------------------------------------- Debian
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development Tools)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# A host runs with the version it was built against and every later one of the same interface.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Where dpkg-shlibdeps finds the library that the tool needs; its package is named below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})

# The number in the name is that of the binary interface, so that two of them can be installed.
set(oviRuntimePackage libovicore${PROJECT_VERSION_MAJOR})
set(oviThisRuntime "${oviRuntimePackage} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${oviRuntimePackage})
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"OviCore holds schemas (templates with versions and typed properties) and scenes
(assets that implement them), read from and written to XML files, and tells its
host of every change.
This package holds the library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libovicore-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ${oviThisRuntime})
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"This package holds the C headers of OviCore, and what CMake and pkg-config need
to find the library.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ovicore)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS ${oviThisRuntime})
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
"This package holds the command line tool ovi, which checks, shows and formats
template and scene files, with samples and documents.")

include(CPack)
