#pragma once

#include "foundation/nstring.h"

enum class RequestKind { Read, Set, Delete };

struct CommandLine {
    RequestKind Kind = RequestKind::Read;
    NString ExchangeFile;
};

// Takes the arguments of wmain, the program's own name first. True for exactly
// one of `--GetAudioInf=`, `--SetTags=` and `--DelTagElements=` with the path
// of the exchange file behind it; the quotes around the path are gone by then,
// or, if they come through, are taken off here.
bool ParseCommandLine(int count, const wchar_t* const* arguments, CommandLine& result);
