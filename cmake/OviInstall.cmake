# Install rules. A host finds the library with find_package(OviCore CONFIG), installed or in this
# build directory, or with pkg-config; both give relocatable paths only, so that an installed tree
# can be moved. The components are the packages of a system that divides what it installs:
#   Runtime      what a program needs that was linked with the library;
#   Development  what is needed to link one;
#   Tools        the command line tool, the samples and the documents.
include(CMakePackageConfigHelpers)

set(oviPackageDir ${CMAKE_INSTALL_LIBDIR}/cmake/OviCore)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME Development)

# ---------------------------------------------------------------------------------------- library
install(TARGETS OviCore EXPORT OviCoreTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ovi
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(EXPORT OviCoreTargets NAMESPACE OviCore:: DESTINATION ${oviPackageDir})
export(EXPORT OviCoreTargets NAMESPACE OviCore::
    FILE ${PROJECT_BINARY_DIR}/OviCoreTargets.cmake)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/OviCoreConfig.cmake.in
    ${PROJECT_BINARY_DIR}/OviCoreConfig.cmake
    INSTALL_DESTINATION ${oviPackageDir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OviCoreConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/OviCoreConfig.cmake
    ${PROJECT_BINARY_DIR}/OviCoreConfigVersion.cmake
    DESTINATION ${oviPackageDir})

# The way from the .pc file to the prefix, so that the installed tree can be moved.
file(RELATIVE_PATH oviPrefixFromPkgConfig
    /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${PROJECT_SOURCE_DIR}/cmake/ovicore.pc.in ${PROJECT_BINARY_DIR}/ovicore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ovicore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# ------------------------------------------------------------------ programs, samples, documents
# ovi_install_program(<target>)
#
# Installs a program that finds the library beside itself, wherever the tree is moved.
function(ovi_install_program target)
    file(RELATIVE_PATH libraryFromProgram
        ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "\$ORIGIN/${libraryFromProgram}")
    install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Tools)
endfunction()

# A project that takes the library in with add_subdirectory has samples and documents of its own.
if(PROJECT_IS_TOP_LEVEL)
    install(FILES ${PROJECT_SOURCE_DIR}/examples/host.c ${PROJECT_SOURCE_DIR}/examples/README.md
        DESTINATION ${CMAKE_INSTALL_DATADIR}/ovicore/examples COMPONENT Tools)
    foreach(folder faulty scenes schema)
        install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/${folder}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/ovicore/examples COMPONENT Tools)
    endforeach()
    install(FILES
        ${PROJECT_SOURCE_DIR}/CHANGELOG.md
        ${PROJECT_SOURCE_DIR}/LICENSE
        ${PROJECT_SOURCE_DIR}/docs/architecture.md
        ${PROJECT_SOURCE_DIR}/docs/install.md
        ${PROJECT_SOURCE_DIR}/docs/ovi.md
        ${PROJECT_SOURCE_DIR}/docs/robustness.md
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ovicore COMPONENT Tools)
endif()
