# The portable core on the machine that builds it, under AddressSanitizer and
# UBSan, with the same test files as on Windows. wchar_t is made 2 bytes wide as
# it is there, so the C library's wide functions, which read 4-byte units, are
# replaced by tests/support/wide_native.cpp.
set(_native_options
    -fshort-wchar -fno-builtin -D_GLIBCXX_EXTERN_TEMPLATE=0
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
add_compile_options(${_native_options})
add_link_options(-fsanitize=address,undefined)
if(TONEWRIGHT_FUZZ)
    # The core itself reports its coverage to the fuzzer.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# GoogleTest has to agree about the width of wchar_t, so it's built here too.
set(GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest's sources")
set(INSTALL_GTEST OFF)
set(BUILD_GMOCK ON)
add_subdirectory(${GOOGLETEST_SOURCE} googletest EXCLUDE_FROM_ALL SYSTEM)
include(GoogleTest)

add_library(native_core STATIC
    ${foundation_portable} ${codec_portable} ${native_support})
target_include_directories(native_core PUBLIC ${CMAKE_SOURCE_DIR})
target_link_libraries(native_core PUBLIC tonewright_warnings)

add_executable(native_tests ${foundation_tests_portable} ${codec_tests_portable})
target_link_libraries(native_tests PRIVATE native_core GTest::gtest GTest::gmock GTest::gtest_main)
gtest_discover_tests(native_tests TEST_PREFIX native_tests. DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 120)

if(TONEWRIGHT_FUZZ)
    add_executable(fuzz_tag_record fuzz/fuzz_tag_record.cpp)
    target_link_options(fuzz_tag_record PRIVATE -fsanitize=fuzzer)
    target_link_libraries(fuzz_tag_record PRIVATE native_core)
endif()
