#pragma once

#include <tbytevector.h>
#include <tiostream.h>

#include <cstdint>
#include <string>
#include <string_view>

// Bounded reading of headers. A field outside the bytes reads as 0, so that a
// cut header gives facts that aren't there instead of wrong ones.
namespace decoder {

// Up to `count` bytes from `offset` on: fewer at the end of the stream, none
// for a place outside of it.
TagLib::ByteVector BytesAt(TagLib::IOStream& stream, int64_t offset, uint32_t count);

uint32_t Byte(const TagLib::ByteVector& bytes, uint32_t at);
uint32_t Little16(const TagLib::ByteVector& bytes, uint32_t at);
uint32_t Little32(const TagLib::ByteVector& bytes, uint32_t at);
uint64_t Little64(const TagLib::ByteVector& bytes, uint32_t at);
uint32_t Big16(const TagLib::ByteVector& bytes, uint32_t at);
uint32_t Big24(const TagLib::ByteVector& bytes, uint32_t at);
uint32_t Big32(const TagLib::ByteVector& bytes, uint32_t at);
uint64_t Big64(const TagLib::ByteVector& bytes, uint32_t at);

bool HasMark(const TagLib::ByteVector& bytes, std::string_view mark, uint32_t at = 0);
// The text of a field of that size: up to its first zero byte, without the
// blanks at its end. Bytes beyond ASCII become "?".
std::string TextField(const TagLib::ByteVector& bytes, uint32_t at, uint32_t size);

} // namespace decoder
