# The sources of all libraries and their tests, once. The Windows build compiles
# all of them; the native build under sanitizers takes the lists named
# *_portable, which hold no file that includes windows.h.
#
# A room's list names its library; <room>_tests its test program.

set(foundation_portable
    foundation/nbuffer.cpp
    foundation/nlists.cpp
    foundation/npath.cpp
    foundation/nstring.cpp
    foundation/nstring_numbers.cpp
    foundation/utf8_decoder.cpp)
set(foundation_windows
    foundation/codepage_windows.cpp
    foundation/module_instance.cpp
    foundation/ndisk.cpp
    foundation/ndll.cpp
    foundation/ndropfiles.cpp
    foundation/nfile.cpp
    foundation/nfilefind.cpp
    foundation/nfolders.cpp
    foundation/nmemory.cpp
    foundation/nmutex.cpp
    foundation/nopenfiledialog.cpp
    foundation/nprocess.cpp
    foundation/nrandom.cpp
    foundation/nreg.cpp
    foundation/ntempfile.cpp)

set(codec_portable
    codec/tag_record.cpp)
set(codec_windows
    codec/codec_handler.cpp
    codec/decoder.cpp
    codec/tag_exchange.cpp
    codec/trace.cpp)

set(toolkit_windows
    toolkit/device_contexts.cpp
    toolkit/nbitmap.cpp
    toolkit/nbrush.cpp
    toolkit/ncanvas.cpp
    toolkit/nfont.cpp
    toolkit/nicon.cpp
    toolkit/nmsimg.cpp
    toolkit/npen.cpp
    toolkit/nthread.cpp
    toolkit/picture_decoding.cpp)

set(audiopage_windows)

set(tagpage_windows)

set(shell_windows
    shell/class_factory.cpp
    shell/com_module.cpp
    shell/context_menu.cpp
    shell/convert_files.cpp
    shell/dll_main.cpp
    shell/edit_entry.cpp
    shell/exports.cpp
    shell/list_file.cpp
    shell/module_path.cpp
    shell/page_counters.cpp
    shell/registration.cpp
    shell/shell_object.cpp
    shell/type_info.cpp)

# The programs and libraries of suite/.
set(tagmap_windows
    suite/tagmap/aiff_text_chunks.cpp
    suite/tagmap/ape_pictures.cpp
    suite/tagmap/ape_save.cpp
    suite/tagmap/ape_tags.cpp
    suite/tagmap/asf_tags.cpp
    suite/tagmap/audio_file.cpp
    suite/tagmap/field_rules.cpp
    suite/tagmap/file_stream.cpp
    suite/tagmap/flac_blocks.cpp
    suite/tagmap/flac_pictures.cpp
    suite/tagmap/format_tags.cpp
    suite/tagmap/id3v1_tags.cpp
    suite/tagmap/id3v2_fields.cpp
    suite/tagmap/id3v2_file_tags.cpp
    suite/tagmap/id3v2_frames.cpp
    suite/tagmap/id3v2_names.cpp
    suite/tagmap/id3v2_people.cpp
    suite/tagmap/id3v2_pictures.cpp
    suite/tagmap/id3v2_save.cpp
    suite/tagmap/id3v2_source.cpp
    suite/tagmap/id3v2_tags.cpp
    suite/tagmap/lesser_tags.cpp
    suite/tagmap/mapping_table.cpp
    suite/tagmap/mp4_boxes.cpp
    suite/tagmap/mp4_tags.cpp
    suite/tagmap/mpeg_frames.cpp
    suite/tagmap/ogg_flac_comment.cpp
    suite/tagmap/ogg_flac_pictures.cpp
    suite/tagmap/pictures.cpp
    suite/tagmap/rating.cpp
    suite/tagmap/riff_info_tags.cpp
    suite/tagmap/tag_check.cpp
    suite/tagmap/tag_file.cpp
    suite/tagmap/tag_values.cpp
    suite/tagmap/vorbis_file_tags.cpp
    suite/tagmap/vorbis_save.cpp
    suite/tagmap/vorbis_tags.cpp
    suite/tagmap/wav_file_tags.cpp)
set(querytrackdata_windows
    suite/querytrackdata/audio_file_handle.cpp
    suite/querytrackdata/command_line.cpp
    suite/querytrackdata/crash_guard.cpp
    suite/querytrackdata/error_line.cpp
    suite/querytrackdata/exchange_file.cpp
    suite/querytrackdata/file_traits.cpp
    suite/querytrackdata/full_path.cpp
    suite/querytrackdata/program.cpp
    suite/querytrackdata/requests.cpp
    suite/querytrackdata/safe_write.cpp
    suite/querytrackdata/tag_edits.cpp
    suite/querytrackdata/writer_lock.cpp)
set(decoder_windows)
set(shellhost_windows
    suite/shellhost/change_report.cpp
    suite/shellhost/command.cpp
    suite/shellhost/console.cpp
    suite/shellhost/delete_command.cpp
    suite/shellhost/drop_data_object.cpp
    suite/shellhost/drop_list.cpp
    suite/shellhost/element_argument.cpp
    suite/shellhost/file_problem.cpp
    suite/shellhost/format_enumerator.cpp
    suite/shellhost/full_path.cpp
    suite/shellhost/module_host.cpp
    suite/shellhost/program.cpp
    suite/shellhost/set_command.cpp
    suite/shellhost/tag_check.cpp
    suite/shellhost/tag_reading.cpp
    suite/shellhost/tag_text.cpp
    suite/shellhost/tags_command.cpp)

# Tests: tests/<library>/<source>_test.cpp.
set(test_support_windows
    tests/support/dialog_hook.cpp
    tests/support/message_box_driver.cpp
    tests/support/private_current_user.cpp
    tests/support/temp_folder.cpp
    tests/support/test_registry_key.cpp)
set(native_support
    tests/support/codepage_native.cpp
    tests/support/wide_native.cpp)

set(foundation_tests_portable
    tests/foundation/nbuffer_test.cpp
    tests/foundation/nlists_test.cpp
    tests/foundation/npath_test.cpp
    tests/foundation/nstring_test.cpp
    tests/foundation/nstring_numbers_test.cpp
    tests/foundation/utf8_decoder_test.cpp)
set(foundation_tests_windows
    tests/foundation/codepage_windows_test.cpp
    tests/foundation/com_owners_test.cpp
    tests/foundation/module_instance_test.cpp
    tests/foundation/ndisk_test.cpp
    tests/foundation/ndll_test.cpp
    tests/foundation/ndropfiles_test.cpp
    tests/foundation/nfile_test.cpp
    tests/foundation/nfilefind_test.cpp
    tests/foundation/nfolders_test.cpp
    tests/foundation/nmemory_test.cpp
    tests/foundation/nmutex_test.cpp
    tests/foundation/nopenfiledialog_test.cpp
    tests/foundation/nprocess_test.cpp
    tests/foundation/nrandom_test.cpp
    tests/foundation/nreg_test.cpp
    tests/foundation/ntempfile_test.cpp
    tests/foundation/unique_handle_test.cpp)

set(codec_tests_portable
    tests/codec/tag_record_test.cpp)
set(codec_tests_windows
    tests/codec/codec_handler_test.cpp
    tests/codec/decoder_test.cpp
    tests/codec/plugins/plugin_folder.cpp
    tests/codec/plugins/recording_script.cpp
    tests/codec/tag_exchange_test.cpp
    tests/codec/trace_test.cpp)

set(toolkit_tests_windows)

set(audiopage_tests_windows)

set(tagpage_tests_windows)

set(shell_tests_windows
    tests/shell/class_factory_test.cpp
    tests/shell/com_guard_test.cpp
    tests/shell/com_module_test.cpp
    tests/shell/com_object_test.cpp
    tests/shell/context_menu_test.cpp
    tests/shell/convert_files_test.cpp
    tests/shell/counted_allocations.cpp
    tests/shell/dll_main_test.cpp
    tests/shell/edit_entry_test.cpp
    tests/shell/exports_test.cpp
    tests/shell/fake_data_object.cpp
    tests/shell/loaded_module.cpp
    tests/shell/module_path_test.cpp
    tests/shell/module_test.cpp
    tests/shell/portable_executable.cpp
    tests/shell/private_classes_root.cpp
    tests/shell/registration_test.cpp
    tests/shell/shell_object_test.cpp
    tests/shell/type_info_test.cpp)
set(shell_registration_tests_windows
    tests/shell/fake_data_object.cpp
    tests/shell/installed_module_test.cpp
    tests/shell/loaded_module.cpp)
set(tagmap_tests_windows
    tests/querytrackdata/test_files.cpp
    tests/tagmap/aiff_text_chunks_test.cpp
    tests/tagmap/ape_save_test.cpp
    tests/tagmap/ape_tags_test.cpp
    tests/tagmap/asf_tags_test.cpp
    tests/tagmap/audio_file_test.cpp
    tests/tagmap/field_rules_test.cpp
    tests/tagmap/file_stream_test.cpp
    tests/tagmap/flac_blocks_test.cpp
    tests/tagmap/flac_pictures_test.cpp
    tests/tagmap/id3v1_tags_test.cpp
    tests/tagmap/id3v2_file_tags_test.cpp
    tests/tagmap/id3v2_pictures_test.cpp
    tests/tagmap/id3v2_source_test.cpp
    tests/tagmap/id3v2_tags_test.cpp
    tests/tagmap/lesser_tags_test.cpp
    tests/tagmap/mapping_table_test.cpp
    tests/tagmap/mp4_boxes_test.cpp
    tests/tagmap/mp4_tags_test.cpp
    tests/tagmap/mpeg_frames_test.cpp
    tests/tagmap/ogg_flac_comment_test.cpp
    tests/tagmap/ogg_flac_pictures_test.cpp
    tests/tagmap/pictures_test.cpp
    tests/tagmap/rating_test.cpp
    tests/tagmap/riff_info_tags_test.cpp
    tests/tagmap/tag_file_test.cpp
    tests/tagmap/tag_values_test.cpp
    tests/tagmap/vorbis_save_test.cpp
    tests/tagmap/vorbis_tags_test.cpp
    tests/tagmap/wav_file_tags_test.cpp)
set(querytrackdata_tests_windows
    tests/faults/hostile_sizes_test.cpp
    tests/faults/kill_test.cpp
    tests/querytrackdata/command_line_test.cpp
    tests/querytrackdata/disk_change_watch.cpp
    tests/querytrackdata/error_line_test.cpp
    tests/querytrackdata/exchange_file_test.cpp
    tests/querytrackdata/full_path_test.cpp
    tests/querytrackdata/imports_test.cpp
    tests/querytrackdata/program_runner.cpp
    tests/querytrackdata/program_test.cpp
    tests/querytrackdata/requests_test.cpp
    tests/querytrackdata/safe_write_test.cpp
    tests/querytrackdata/test_files.cpp)
set(decoder_tests_windows)
set(shellhost_tests_windows
    tests/shellhost/commands_test.cpp
    tests/shellhost/console_test.cpp
    tests/shellhost/drop_data_object_test.cpp
    tests/shellhost/drop_list_test.cpp
    tests/shellhost/element_argument_test.cpp
    tests/shellhost/file_problem_test.cpp
    tests/shellhost/format_enumerator_test.cpp
    tests/shellhost/full_path_test.cpp
    tests/shellhost/module_host_test.cpp
    tests/shellhost/program_test.cpp
    tests/shellhost/tag_check_test.cpp
    tests/shellhost/tag_reading_test.cpp
    tests/shellhost/tag_text_test.cpp)

# The lists stand above as seen from the root; folders further down use them too.
foreach(list IN ITEMS
        foundation_portable foundation_windows codec_portable codec_windows
        toolkit_windows audiopage_windows tagpage_windows shell_windows
        tagmap_windows querytrackdata_windows decoder_windows shellhost_windows
        test_support_windows native_support foundation_tests_portable foundation_tests_windows
        codec_tests_portable codec_tests_windows toolkit_tests_windows
        audiopage_tests_windows tagpage_tests_windows shell_tests_windows decoder_tests_windows
        shell_registration_tests_windows tagmap_tests_windows
        querytrackdata_tests_windows shellhost_tests_windows)
    list(TRANSFORM ${list} PREPEND ${CMAKE_CURRENT_LIST_DIR}/../)
endforeach()
