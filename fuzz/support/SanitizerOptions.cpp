// How the sanitizers are to behave, so that a target gives the same findings however it is started.
// Without sanitizers nobody calls these functions. Their names are given.

// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)

/// Files may ask for blocks of any size: a large one fails as if memory had run out.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=64:strict_string_checks=1";
}

extern "C" const char* __lsan_default_options() {
    return "suppressions=" OVI_SOURCE_DIR "/scripts/lsan.supp:print_suppressions=0";
}

extern "C" const char* __ubsan_default_options() {
    return "print_stacktrace=1:halt_on_error=1";
}

// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
