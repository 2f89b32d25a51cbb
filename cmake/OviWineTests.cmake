# The tests of a build for Windows, run on the building system by Wine.

# What every such test needs in its environment: a Wine of its own, and the way to the DLL.
set(oviWineEnvironment
    WINEDEBUG=-all
    WINEPREFIX=${PROJECT_BINARY_DIR}/wine
    WINEPATH=Z:${PROJECT_BINARY_DIR}
    OVI_EMULATOR=${CMAKE_CROSSCOMPILING_EMULATOR})

# ovi_run_with_wine(<test>...)
function(ovi_run_with_wine)
    set_tests_properties(${ARGN} PROPERTIES ENVIRONMENT "${oviWineEnvironment}")
endfunction()
