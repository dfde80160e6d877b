#pragma once

#include <cstdint>

// The exchange files of QueryTrackData.exe, as both sides write and read them.
// All text is UTF-16 little-endian without a byte-order mark or a terminator;
// all numbers are little-endian; a record is clTagRecord's serialised form.
//
//     --GetAudioInf     request: path
//                       reply:   magic, 32-bit length, record
//     --SetTags         request: 32-bit size, record, 32-bit marker, path
//     --DelTagElements  request: path, units 13 and 10, then the names with
//                                the separator between them, or the text for all
inline constexpr char TagReplyMagic[4] = {'I', 'D', 'T', 'G'};
inline constexpr uint32_t TagReplyHeaderSize = 8; // the magic and the length
inline constexpr uint32_t TagReplyMinSize = 9;    // a reply without payload isn't one
inline constexpr uint32_t TagRequestMarker = 0x12945633;
inline constexpr wchar_t TagNameSeparator[] = L"{tag_sep}";
inline constexpr wchar_t TagDeleteAll[] = L"[tag_del_all]";
