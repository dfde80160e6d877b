#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

#include <cstdint>

// One named value of the registry per call: each opens its key, does its work
// and closes the key. A null root or sub-key stands for the default; with an
// empty sub-key nothing is read or written. A read of a key that isn't there
// makes it, empty. Nothing here shows a message. Texts are read as strings
// whether they are REG_SZ or REG_EXPAND_SZ, and nothing is expanded.

// The process-wide defaults, null and empty at the start. No lock: set on one
// thread before others read.
void NRegSetDefault(HKEY root, const wchar_t* subKey);

// 0 on any failure; `failed` (may be null) tells it from a value of 0.
uint32_t NRegReadDword(const wchar_t* name, HKEY root = nullptr, const wchar_t* subKey = nullptr,
                       bool* failed = nullptr);
bool NRegWriteDword(uint32_t value, const wchar_t* name, HKEY root = nullptr,
                    const wchar_t* subKey = nullptr);

// Up to the first terminator; empty on any failure.
NString NRegReadString(const wchar_t* name, HKEY root = nullptr, const wchar_t* subKey = nullptr,
                       bool* failed = nullptr);
// Writes the text with its terminator, as REG_EXPAND_SZ if `expand` is set.
bool NRegWriteString(const wchar_t* text, const wchar_t* name, HKEY root = nullptr,
                     const wchar_t* subKey = nullptr, bool expand = false);

// Reads a REG_BINARY value into `size` bytes at `buffer`. On any failure, a
// buffer that is too small included, the buffer is zeroed.
bool NRegGetBinary(const wchar_t* name, void* buffer, uint32_t size, HKEY root = nullptr,
                   const wchar_t* subKey = nullptr);
void NRegWriteBinary(const wchar_t* name, const void* data, uint32_t size, HKEY root = nullptr,
                     const wchar_t* subKey = nullptr);

bool NRegValueExists(const wchar_t* name, HKEY root = nullptr, const wchar_t* subKey = nullptr);
// Bytes, a text's terminator included.
uint32_t NRegValueSize(const wchar_t* name, HKEY root = nullptr, const wchar_t* subKey = nullptr,
                       bool* failed = nullptr);
// REG_ type.
uint32_t NRegValueType(const wchar_t* name, HKEY root = nullptr, const wchar_t* subKey = nullptr,
                       bool* failed = nullptr);
void NRegDeleteValue(const wchar_t* name, HKEY root = nullptr, const wchar_t* subKey = nullptr);
