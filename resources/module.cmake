# tNWShell.DLL: the rooms' libraries, the exports, and the module's resources.

# The type library is compiled from its .idl. stdole2.tlb, which every such
# library refers to, comes with Wine.
find_program(WIDL x86_64-w64-mingw32-widl REQUIRED)
find_path(STDOLE_DIR stdole2.tlb REQUIRED NO_CMAKE_FIND_ROOT_PATH PATHS
    /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
    /usr/lib/wine/x86_64-windows
    /usr/lib64/wine/x86_64-windows
    /usr/local/lib/wine/x86_64-windows)
set(module_resources ${CMAKE_SOURCE_DIR}/resources)
set(module_typelib ${CMAKE_BINARY_DIR}/resources/tnwshell.tlb)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/resources)
add_custom_command(OUTPUT ${module_typelib}
    COMMAND ${WIDL} -m64 -t -L${STDOLE_DIR} -o ${module_typelib} ${module_resources}/tnwshell.idl
    COMMAND ${module_resources}/strip-typelib-time ${module_typelib}
    DEPENDS ${module_resources}/tnwshell.idl ${module_resources}/strip-typelib-time
    COMMENT "Compiling the type library"
    VERBATIM)

# The pictures are drawn by scripts, which stand in art/.
find_program(PYTHON3 python3 REQUIRED)
set(module_art ${module_resources}/art)
set(module_menu_pictures
    ${CMAKE_BINARY_DIR}/resources/convert_to.bmp
    ${CMAKE_BINARY_DIR}/resources/edit_id_tag.bmp)
add_custom_command(OUTPUT ${module_menu_pictures}
    COMMAND ${PYTHON3} -B ${module_art}/draw-menu-pictures ${CMAKE_BINARY_DIR}/resources
    DEPENDS ${module_art}/draw-menu-pictures ${module_art}/shapes.py
    COMMENT "Drawing the pictures of the menu"
    VERBATIM)
set(module_art_frame ${CMAKE_BINARY_DIR}/resources/art_frame.bmp)
add_custom_command(OUTPUT ${module_art_frame}
    COMMAND ${PYTHON3} -B ${module_art}/draw-disc-case ${CMAKE_BINARY_DIR}/resources
    DEPENDS ${module_art}/draw-disc-case ${module_art}/shapes.py
    COMMENT "Drawing the disc case"
    VERBATIM)
set(module_page_buttons
    ${CMAKE_BINARY_DIR}/resources/button_first.bmp
    ${CMAKE_BINARY_DIR}/resources/button_previous.bmp
    ${CMAKE_BINARY_DIR}/resources/button_view_single.bmp
    ${CMAKE_BINARY_DIR}/resources/button_next.bmp
    ${CMAKE_BINARY_DIR}/resources/button_last.bmp
    ${CMAKE_BINARY_DIR}/resources/button_options.bmp)
add_custom_command(OUTPUT ${module_page_buttons}
    COMMAND ${PYTHON3} -B ${module_art}/draw-page-buttons ${CMAKE_BINARY_DIR}/resources
    DEPENDS ${module_art}/draw-page-buttons ${module_art}/buttons.py ${module_art}/shapes.py
    COMMENT "Drawing the pages' buttons"
    VERBATIM)
set(module_page_signs
    ${CMAKE_BINARY_DIR}/resources/stars.bmp
    ${CMAKE_BINARY_DIR}/resources/icon_page.ico
    ${CMAKE_BINARY_DIR}/resources/icon_clipboard.ico
    ${CMAKE_BINARY_DIR}/resources/icon_cut.ico
    ${CMAKE_BINARY_DIR}/resources/icon_arrow_left.ico
    ${CMAKE_BINARY_DIR}/resources/icon_arrow_right.ico)
add_custom_command(OUTPUT ${module_page_signs}
    COMMAND ${PYTHON3} -B ${module_art}/draw-page-signs ${CMAKE_BINARY_DIR}/resources
    DEPENDS ${module_art}/draw-page-signs ${module_art}/shapes.py
    COMMENT "Drawing the page's stars and icons"
    VERBATIM)
set(module_tag_page_pictures
    ${CMAKE_BINARY_DIR}/resources/button_edit_single.bmp
    ${CMAKE_BINARY_DIR}/resources/button_add.bmp
    ${CMAKE_BINARY_DIR}/resources/button_remove.bmp
    ${CMAKE_BINARY_DIR}/resources/button_clear.bmp
    ${CMAKE_BINARY_DIR}/resources/icon_tag_page.ico)
add_custom_command(OUTPUT ${module_tag_page_pictures}
    COMMAND ${PYTHON3} -B ${module_art}/draw-tag-page-pictures ${CMAKE_BINARY_DIR}/resources
    DEPENDS ${module_art}/draw-tag-page-pictures ${module_art}/buttons.py ${module_art}/shapes.py
    COMMENT "Drawing the ID-Tag page's pictures"
    VERBATIM)
set(module_suite_icon ${CMAKE_BINARY_DIR}/resources/icon_suite.ico)
add_custom_command(OUTPUT ${module_suite_icon}
    COMMAND ${PYTHON3} -B ${module_art}/draw-suite-icon ${CMAKE_BINARY_DIR}/resources
    DEPENDS ${module_art}/draw-suite-icon ${module_art}/shapes.py
    COMMENT "Drawing the icon of the module's windows"
    VERBATIM)
set(module_page_pictures ${module_art_frame} ${module_page_buttons} ${module_page_signs}
    ${module_tag_page_pictures})
# For the tests that show the pages too.
add_custom_target(page_pictures DEPENDS ${module_page_pictures})

enable_language(RC)
set_source_files_properties(${module_resources}/module.rc PROPERTIES
    INCLUDE_DIRECTORIES "${CMAKE_SOURCE_DIR};${module_resources};${CMAKE_BINARY_DIR}/resources"
    COMPILE_OPTIONS "-c;65001"
    OBJECT_DEPENDS "${module_typelib};${module_menu_pictures};${module_page_pictures};${module_suite_icon};${module_resources}/tnwshell.rgs;${module_resources}/audio_page.rc;${module_resources}/tag_page.rc;${module_resources}/resource_ids.h")

# DllMain and the exports lie in the shell room, where no other object asks
# for them: the whole archive is taken.
add_library(tNWShell MODULE ${module_resources}/module.rc ${module_resources}/tnwshell.def)
target_link_libraries(tNWShell PRIVATE library_start "$<LINK_LIBRARY:WHOLE_ARCHIVE,shell>")
set_target_properties(tNWShell PROPERTIES
    PREFIX ""
    OUTPUT_NAME tNWShell
    SUFFIX .DLL
    LINKER_LANGUAGE CXX
    LIBRARY_OUTPUT_DIRECTORY ${TONEWRIGHT_SUITE_DIR})
