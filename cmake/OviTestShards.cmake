# ovi_add_gtest_shards(<target> <label> [<environment>...])
#
# Runs a test program in two parts, each a process, where a process for each of its thousands of
# cases would cost more than the tests. tests/support/totals.py counts the cases.
function(ovi_add_gtest_shards target label)
    set(count 2)
    foreach(index RANGE 1 ${count})
        math(EXPR shard "${index} - 1")
        set(name ${label}.part${index})
        add_test(NAME ${name} COMMAND ${target} --gtest_brief=1
            --gtest_output=json:results/${name}.json)
        set_tests_properties(${name} PROPERTIES LABELS ${label} TIMEOUT 900
            ENVIRONMENT "${ARGN};GTEST_TOTAL_SHARDS=${count};GTEST_SHARD_INDEX=${shard}")
    endforeach()
endfunction()
