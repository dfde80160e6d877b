#pragma once

#include "audiopage/merged_facts.h"
#include "foundation/nstring.h"

#include <cstdint>

// The values of the rows that are no tag elements. `fileSizeUnit` is the
// setting `UnitsFileSize`; the others read their settings themselves.

// Empty for a size of 0. With the original size known it goes on with how much
// of that the file is.
NString SizeText(const MergedFacts& facts, uint32_t fileSizeUnit);
// Of the audio uncompressed, or the file's own size where that is not at least
// 1024 bytes less. Never empty.
NString OriginalSizeText(const MergedFacts& facts, uint32_t fileSizeUnit);
NString LengthText(const MergedFacts& facts);
NString ChannelsText(const MergedFacts& facts);
// Ends in a carriage return unless it is empty or tells that files differ.
NString SampleRateText(const MergedFacts& facts);
NString SampleSizeText(const MergedFacts& facts);
NString BitRateText(const MergedFacts& facts, bool onePath);
// The type of the path's extension, with the extension behind it.
NString TypeText(const NString& path);
