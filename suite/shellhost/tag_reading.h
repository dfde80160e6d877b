#pragma once

#include "codec/tag_record.h"
#include "foundation/nstring.h"

// Reads a file's tag by the module's exchange. False if there is no reply;
// `problem` says what is known of the cause. A file without a tag is read: its
// record is empty.
bool ReadTag(const NString& path, clTagRecord& tag, NString& problem);
