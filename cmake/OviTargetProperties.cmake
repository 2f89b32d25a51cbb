# ovi_set_target_properties(<target>)
#
# Gives a target what every target of this project has:
#   - language levels: C++17 and C99, without compiler extensions;
#   - hidden visibility, inlines included: a name leaves the library only when it says OVI_API;
#   - the warnings of the project, as errors with OVICORE_WERROR;
#   - the sanitizers of OVICORE_SANITIZE, which stop the program at the first finding;
#   - the counters of OVICORE_COVERAGE.
function(ovi_set_target_properties target)
    set_target_properties(${target} PROPERTIES
        CXX_STANDARD 17
        CXX_STANDARD_REQUIRED ON
        CXX_EXTENSIONS OFF
        C_STANDARD 99
        C_STANDARD_REQUIRED ON
        C_EXTENSIONS OFF
        C_VISIBILITY_PRESET hidden
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)

    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /permissive- /utf-8)
        if(OVICORE_WERROR)
            target_compile_options(${target} PRIVATE /WX)
        endif()
        return()
    endif()

    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    if(OVICORE_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()

    if(OVICORE_SANITIZE)
        string(REPLACE ";" "," sanitizers "${OVICORE_SANITIZE}")
        target_compile_options(${target} PRIVATE
            -fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${sanitizers})
    endif()

    if(OVICORE_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage -fprofile-abs-path)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()

# ovi_skip(<what> <missing>...)
#
# Says why a part is not built and which Debian packages would bring it.
function(ovi_skip what)
    list(JOIN ARGN " " packages)
    message(STATUS "${what}: skipped; install the Debian package(s): ${packages}")
endfunction()
