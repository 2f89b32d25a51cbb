# What a build for another system takes from the building one: header-only libraries, and GoogleTest
# built from its sources. find_package finds them like any other package.
#
# The system's include directory as a whole cannot be searched, it holds the building system's C
# library; so each library's folder is linked into a directory of its own.
set(oviCrossHeaders ${PROJECT_BINARY_DIR}/cross-headers)

function(ovi_redirect_package package content)
    string(TOLOWER ${package} name)
    file(CONFIGURE OUTPUT ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/${name}-config.cmake
        CONTENT "${content}" @ONLY)
endfunction()

function(ovi_take_headers package target folder)
    if(NOT EXISTS /usr/include/${folder})
        return()
    endif()
    file(MAKE_DIRECTORY ${oviCrossHeaders})
    file(CREATE_LINK /usr/include/${folder} ${oviCrossHeaders}/${folder} SYMBOLIC)
    ovi_redirect_package(${package} "
add_library(${target} INTERFACE IMPORTED GLOBAL)
target_include_directories(${target} SYSTEM INTERFACE ${oviCrossHeaders})
")
endfunction()

ovi_take_headers(CLI11 CLI11::CLI11 CLI)
ovi_take_headers(nlohmann_json nlohmann_json::nlohmann_json nlohmann)

if(EXISTS /usr/src/googletest/CMakeLists.txt)
    ovi_redirect_package(GTest "
if(NOT TARGET GTest::gtest)
    set(INSTALL_GTEST OFF)
    add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endif()
")
endif()
