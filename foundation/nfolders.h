#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// Where things lie. Folders end in a backslash.

// Ids of NGetSpecialFolder beside the platform's CSIDL_ values.
inline constexpr int NFolderProgramFiles = 0x5000;
inline constexpr int NFolderSystemRoot = 0x5001;
inline constexpr int NFolderSystem = 0x5002;
inline constexpr int NFolderTemp = 0x5003;

// The user's folder for temporary files; "C:\Temp\" if the platform has none.
NString NGetTempFolder();

// The path of the file a module was loaded from, without quotes.
NString NGetModulePath(HINSTANCE instance);
NString NGetModuleFolder(HINSTANCE instance);

// The folder for a CSIDL_ value or one of the ids above. A folder the platform
// doesn't know is derived from another one where that makes sense; failing
// that it is `fallback`, or "C:\Error\" for null. Never empty.
NString NGetSpecialFolder(int id, const wchar_t* fallback = nullptr);

// What both of the functions for folders ask: the platform's path for an id, or
// empty. They are the same functions with another source of answers.
using NFolderLookup = NString (*)(int id);
NString NPlatformFolder(int id);
NString NGetTempFolderBy(NFolderLookup lookup);
NString NGetSpecialFolderBy(NFolderLookup lookup, int id, const wchar_t* fallback);
