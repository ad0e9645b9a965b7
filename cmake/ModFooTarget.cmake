# What every target of this project shares: warnings as errors, sanitizers, the include root.

function(mod_foo_target target)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wcast-qual -Wformat=2
        $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
        # g++ 12 takes std::string concatenation for overlapping copies (GCC bug 105651).
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
        # Source positions in the log name files of the project, not folders of the build machine.
        -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=
        $<$<BOOL:${MOD_FOO_BUILD_FUZZERS}>:-fsanitize=fuzzer-no-link>
        -Werror)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS
        $<$<BOOL:${MOD_FOO_REPORT_JSON_TYPES}>:MOD_FOO_REPORT_JSON_TYPES>)
    if(MOD_FOO_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${MOD_FOO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
            $<$<CXX_COMPILER_ID:Clang>:-fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizer-ignore.txt>)
        target_link_options(${target} PRIVATE -fsanitize=${MOD_FOO_SANITIZE})
    endif()
endfunction()

# A static library of one subsystem folder.
function(mod_foo_library target)
    add_library(${target} STATIC ${ARGN})
    mod_foo_target(${target})
endfunction()

# mod_foo_test(<name> SOURCES ... LIBRARIES ... [LABELS ...])
# One GoogleTest executable whose cases become CTest tests.
function(mod_foo_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    mod_foo_target(${name})
    target_compile_definitions(${name} PRIVATE
        MOD_FOO_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 300 LABELS "${arg_LABELS}")
endfunction()
