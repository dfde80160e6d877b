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

    # The decoder plug-in over files in memory, with TagLib from the source that
    # tools/build-taglib leaves: it must agree about the width of wchar_t, too.
    # Overflows inside it are its own affair; its errors of memory are looked for.
    set(TAGLIB_SOURCE ${CMAKE_SOURCE_DIR}/build/taglib/source/taglib CACHE PATH "TagLib's sources")
    if(NOT EXISTS ${TAGLIB_SOURCE})
        message(FATAL_ERROR "Run tools/build-taglib first: it leaves TagLib's sources")
    endif()
    file(GLOB_RECURSE taglib_sources CONFIGURE_DEPENDS ${TAGLIB_SOURCE}/*.cpp)
    file(GLOB_RECURSE taglib_headers CONFIGURE_DEPENDS ${TAGLIB_SOURCE}/*.h)
    set(taglib_folders ${TAGLIB_SOURCE})
    foreach(header IN LISTS taglib_headers)
        cmake_path(GET header PARENT_PATH folder)
        list(APPEND taglib_folders ${folder})
    endforeach()
    list(REMOVE_DUPLICATES taglib_folders)
    set(TAGLIB_LIB_MAJOR_VERSION 1)
    set(TAGLIB_LIB_MINOR_VERSION 13)
    set(TAGLIB_LIB_PATCH_VERSION 0)
    configure_file(${TAGLIB_SOURCE}/taglib_config.h.cmake taglib/taglib_config.h)
    add_library(native_taglib STATIC ${taglib_sources})
    target_include_directories(native_taglib SYSTEM PUBLIC
        ${taglib_folders} ${TAGLIB_SOURCE}/../3rdparty ${CMAKE_CURRENT_BINARY_DIR}/taglib)
    target_compile_definitions(native_taglib PUBLIC TAGLIB_STATIC PRIVATE NDEBUG HAVE_STD_ATOMIC)
    target_compile_options(native_taglib PRIVATE -fno-sanitize=undefined -O1 -w)

    set(fuzzed_tagmap ${tagmap_windows})
    list(FILTER fuzzed_tagmap EXCLUDE REGEX "/file_stream\\.cpp$")
    add_executable(fuzz_decoder fuzz/fuzz_decoder.cpp ${decoder_windows} ${fuzzed_tagmap})
    # In front of all others: file_stream.h is another one here.
    target_include_directories(fuzz_decoder BEFORE PRIVATE ${CMAKE_SOURCE_DIR}/fuzz/memory_files)
    target_compile_options(fuzz_decoder PRIVATE -O1)
    # Clang's -Wconversion asks for more than the compiler of the Windows build.
    set_source_files_properties(fuzz/fuzz_decoder.cpp ${decoder_windows} ${fuzzed_tagmap}
        PROPERTIES COMPILE_OPTIONS -Wno-sign-conversion)
    target_link_options(fuzz_decoder PRIVATE -fsanitize=fuzzer)
    target_link_libraries(fuzz_decoder PRIVATE native_core native_taglib)
endif()
