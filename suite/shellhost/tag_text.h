#pragma once

#include "codec/tag_record.h"
#include "foundation/nstring.h"

// One element on one line: "name: value". The parts of a value stand with
// " / " between them, other control characters are shown as blanks. Of binary
// data the kind, as found from its first bytes, and the size are told.
NString ElementLine(const clTagElement& element);
