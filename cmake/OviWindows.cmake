# What a DLL has beside the library itself.
#
# ovi_add_version_resource(<target>)
#
# Puts the version of the project into the DLL, where the system and installers read it.
function(ovi_add_version_resource target)
    enable_language(RC)
    configure_file(${PROJECT_SOURCE_DIR}/src/platform/${target}.rc.in
        ${PROJECT_BINARY_DIR}/${target}.rc @ONLY)
    target_sources(${target} PRIVATE ${PROJECT_BINARY_DIR}/${target}.rc)
endfunction()

# ovi_export_by_definition_file(<target> <list file>)
#
# Makes a module definition file from the committed list of exported functions and links the DLL
# with it: a name that the list has and the library has not is an error of the linker.
function(ovi_export_by_definition_file target listFile)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${listFile})
    file(STRINGS ${listFile} names REGEX "^[A-Za-z_]")
    list(JOIN names "\n    " exports)
    set(oviDefinitions "LIBRARY ${target}.dll\nEXPORTS\n    ${exports}\n")
    # Written through CONFIGURE, which leaves an unchanged file alone: no needless relinking.
    set(definitionFile ${PROJECT_BINARY_DIR}/${target}.def)
    file(CONFIGURE OUTPUT ${definitionFile} CONTENT "@oviDefinitions@" @ONLY)
    target_sources(${target} PRIVATE ${definitionFile})
    install(FILES ${definitionFile} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
endfunction()

# ovi_add_msvc_import_library(<target>)
#
# Makes <target>.lib for hosts that are built with Microsoft's compiler, beside the libX.dll.a that
# GNU's linker makes. LLVM's dlltool writes the form that Microsoft's linker makes itself; what
# GNU's writes misleads that linker.
function(ovi_add_msvc_import_library target)
    if(MSVC)
        return() # made by the linker
    endif()
    find_program(OVI_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14)
    if(NOT OVI_LLVM_DLLTOOL)
        ovi_skip("${target}.lib" llvm)
        return()
    endif()
    set(library ${PROJECT_BINARY_DIR}/${target}.lib)
    set(definitionFile ${PROJECT_BINARY_DIR}/${target}.def)
    add_custom_command(OUTPUT ${library}
        COMMAND ${OVI_LLVM_DLLTOOL} -m i386:x86-64 -d ${definitionFile} -l ${library}
        DEPENDS ${definitionFile}
        COMMENT "Making ${target}.lib" VERBATIM)
    add_custom_target(${target}ImportLibrary ALL DEPENDS ${library})
    install(FILES ${library} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
endfunction()
