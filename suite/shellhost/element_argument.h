#pragma once

#include "codec/tag_record.h"
#include "foundation/nstring.h"

// Takes a word NAME=VALUE into `record`. A name that is there already gets the
// value as a further part. VALUE "@FILE" of a picture or of "_cdtoc" stands
// for the bytes of that file; an empty VALUE stands for no value at all.
// False, with `problem`, if the word isn't of that form or the file can't be
// read.
bool TakeElementArgument(const wchar_t* word, clTagRecord& record, NString& problem);

// Whether an element of that name holds bytes: a picture, or "_cdtoc".
bool IsBinaryName(const NString& name);
