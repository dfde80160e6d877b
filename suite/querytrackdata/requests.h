#pragma once

#include "codec/tag_record.h"
#include "foundation/nbuffer.h"
#include "foundation/nlists.h"
#include "foundation/nstring.h"

#include <cstdint>

// The contents of the exchange files (codec/tag_wire.h has their layout), from
// bytes that may be anything. Each parse answers false for what isn't a whole
// request; the results are undefined then.

// The system's own bound for a path, in UTF-16 units.
inline constexpr uint32_t MaxPathUnits = 32767;
// More elements than any tag holds: one takes some 700 bytes of memory, but 8
// bytes of a request.
inline constexpr uint32_t MaxElements = 65536;
// A request above its size isn't read. The largest thing in one is a picture,
// and the roomiest of the tag formats ends at 256 MB.
inline constexpr uint32_t MaxReadRequestSize = 2 * MaxPathUnits;
inline constexpr uint32_t MaxSetRequestSize = 0x10000000;
inline constexpr uint32_t MaxDeleteRequestSize = 0x100000;

// A path of 1 to MaxPathUnits units, without a zero among them.
bool ParseReadRequest(const NBuffer& request, NString& audioFile);

// A record is whole if each block lies within it and holds both its texts with
// their terminators: one that was cut short would change only a part of what
// was asked. Elements without a name are left out, for they name no field.
bool ParseSetRequest(const NBuffer& request, NString& audioFile, clTagRecord& changes);

// `names` comes back empty for the whole tag. Empty names are left out; a
// request with no other names isn't one.
bool ParseDeleteRequest(const NBuffer& request, NString& audioFile, NStringList& names);
