# TagLib, built once for all build folders by tools/build-taglib.
execute_process(
    COMMAND ${CMAKE_SOURCE_DIR}/tools/build-taglib
    OUTPUT_VARIABLE _taglib_dir OUTPUT_STRIP_TRAILING_WHITESPACE
    RESULT_VARIABLE _taglib_result)
if(_taglib_result)
    message(FATAL_ERROR "TagLib could not be built")
endif()

add_library(taglib STATIC IMPORTED GLOBAL)
set_target_properties(taglib PROPERTIES
    IMPORTED_LOCATION ${_taglib_dir}/lib/libtag.a
    INTERFACE_INCLUDE_DIRECTORIES ${_taglib_dir}/include/taglib
    INTERFACE_COMPILE_DEFINITIONS TAGLIB_STATIC)
