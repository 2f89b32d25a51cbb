# Install rules. A host finds the library with find_package(OviCore CONFIG), installed or in this
# build directory, or with pkg-config; both give relocatable paths only.
include(CMakePackageConfigHelpers)

set(oviPackageDir ${CMAKE_INSTALL_LIBDIR}/cmake/OviCore)

install(TARGETS OviCore EXPORT OviCoreTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
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
