#pragma once

#include "codec/tag_record.h"
#include "foundation/nstring.h"

enum class ArgumentResult { Taken, WrongForm, FileUnreadable };

// Takes a word NAME=VALUE into `record`. A name that is there already gets the
// value as a further part. VALUE "@FILE" of a picture or of "_cdtoc" stands
// for the bytes of that file; an empty VALUE stands for no value at all, and
// adds no part. If the word can't be taken, `problem` says why, and `record`
// is as before.
ArgumentResult TakeElementArgument(const wchar_t* word, clTagRecord& record, NString& problem);

// Whether an element of that name is a picture.
bool IsPictureName(const NString& name);
// The number in the name of a picture; 0 if the name isn't that of one.
int PictureNumber(const NString& name);
// Whether an element of that name holds bytes: a picture, or "_cdtoc".
bool IsBinaryName(const NString& name);
