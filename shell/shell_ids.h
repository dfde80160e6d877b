#pragma once

#include "foundation/windows_lean.h"

#include <guiddef.h>

// The identifiers under which the module is registered. They stand in the
// registrar script and the .idl as well; what is installed depends on all.

// {7A1E4C10-93D2-4F6B-8C21-5E0B7D3FA911}
inline constexpr CLSID CLSID_tNWIShell = {
    0x7A1E4C10, 0x93D2, 0x4F6B, {0x8C, 0x21, 0x5E, 0x0B, 0x7D, 0x3F, 0xA9, 0x11}};

// {B3D05E72-1C84-4A9E-A6F3-92C47E18D036}
inline constexpr GUID LIBID_TNWSHELLLib = {
    0xB3D05E72, 0x1C84, 0x4A9E, {0xA6, 0xF3, 0x92, 0xC4, 0x7E, 0x18, 0xD0, 0x36}};

// {4D6F2A90-7B1C-4E35-9A08-C31E5F2B7D64}
inline constexpr IID IID_ItNWIShell = {
    0x4D6F2A90, 0x7B1C, 0x4E35, {0x9A, 0x08, 0xC3, 0x1E, 0x5F, 0x2B, 0x7D, 0x64}};
