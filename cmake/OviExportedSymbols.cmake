# ovi_export_only_listed_symbols(<target> <list file>)
#
# Makes a linker version script from the committed list of exported functions (one name per line),
# so that the dynamic symbols of the library are exactly that list: nothing of the standard library
# or of the classes behind the functions leaks out. On Windows the headers' dllexport does the same.
function(ovi_export_only_listed_symbols target listFile)
    if(APPLE)
        return()
    endif()
    if(NOT EXISTS ${listFile})
        message(WARNING "The list of exported functions is missing: ${listFile}")
        return()
    endif()
    if(WIN32)
        ovi_export_by_definition_file(${target} ${listFile})
        return()
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${listFile})

    file(STRINGS ${listFile} names REGEX "^[A-Za-z_]")
    set(script "{\n    global:\n")
    foreach(name IN LISTS names)
        string(APPEND script "        ${name};\n")
    endforeach()
    string(APPEND script "    local:\n        *;\n};\n")

    # Written through configure_file, which leaves an unchanged file alone: no needless relinking.
    set(oviVersionScript "${script}")
    set(scriptFile ${PROJECT_BINARY_DIR}/${target}.map)
    file(CONFIGURE OUTPUT ${scriptFile} CONTENT "@oviVersionScript@" @ONLY)

    target_link_options(${target} PRIVATE "LINKER:--version-script=${scriptFile}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${scriptFile})
    if(NOT OVICORE_SANITIZE)
        target_link_options(${target} PRIVATE "LINKER:--no-undefined")
    endif()
endfunction()
