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

# ovi_add_gtest_shards(<target> <label>)
#
# Runs a test program in two parts, each a process: one for each test case would start Wine more
# than a thousand times. tests/windows/totals.py counts the cases.
function(ovi_add_gtest_shards target label)
    set(count 2)
    foreach(index RANGE 1 ${count})
        math(EXPR shard "${index} - 1")
        set(name ${label}.part${index})
        add_test(NAME ${name} COMMAND ${target} --gtest_brief=1
            --gtest_output=json:results/${name}.json)
        set_tests_properties(${name} PROPERTIES LABELS ${label} TIMEOUT 300
            ENVIRONMENT
            "${oviWineEnvironment};GTEST_TOTAL_SHARDS=${count};GTEST_SHARD_INDEX=${shard}")
    endforeach()
endfunction()
