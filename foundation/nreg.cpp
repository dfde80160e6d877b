#include "foundation/nreg.h"

#include "foundation/unique_handle.h"

#include <cstring>
#include <vector>

namespace {
HKEY defaultRoot;
NString defaultSubKey;

// Opens or makes the key; none if it can't be, or the sub-key is empty.
UniqueRegKey OpenKey(HKEY root, const wchar_t* subKey, REGSAM access) {
    NString path(defaultSubKey);
    if (subKey)
        path = subKey;
    if (path.IsEmpty())
        return UniqueRegKey();
    wchar_t keyClass[] = L"";
    HKEY key = nullptr;
    // Makes a key that is missing, before a read too: wanted.
    LSTATUS result = RegCreateKeyExW(root ? root : defaultRoot, path.Text, 0, keyClass, 0, access,
                                     nullptr, &key, nullptr);
    return UniqueRegKey(result == ERROR_SUCCESS ? key : nullptr);
}

UniqueRegKey OpenToRead(HKEY root, const wchar_t* subKey) {
    return OpenKey(root, subKey, KEY_QUERY_VALUE);
}

bool IsText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

// False, and zeros in the buffer, unless the value was read and is of the type.
bool ReadRaw(const wchar_t* name, HKEY root, const wchar_t* subKey, DWORD expected, void* buffer,
             uint32_t size) {
    UniqueRegKey key = OpenToRead(root, subKey);
    DWORD type = REG_NONE;
    DWORD length = size;
    bool done = buffer && key &&
                RegQueryValueExW(key.Get(), name, nullptr, &type, static_cast<BYTE*>(buffer),
                                 &length) == ERROR_SUCCESS;
    if (done && type != expected && !(IsText(type) && IsText(expected)))
        done = false;
    if (!done && buffer && size)
        memset(buffer, 0, size);
    return done;
}

bool WriteRaw(const wchar_t* name, HKEY root, const wchar_t* subKey, DWORD type, const void* data,
              uint32_t size) {
    UniqueRegKey key = OpenKey(root, subKey, KEY_WRITE);
    return key && RegSetValueExW(key.Get(), name, 0, type, static_cast<const BYTE*>(data), size) ==
                      ERROR_SUCCESS;
}

struct ValueFacts {
    DWORD type = 0;
    DWORD size = 0;
    bool found = false;
};

// Type and size of a value, without its data; zeros if it isn't there.
ValueFacts Query(const wchar_t* name, HKEY root, const wchar_t* subKey) {
    UniqueRegKey key = OpenToRead(root, subKey);
    ValueFacts facts;
    facts.found = key && RegQueryValueExW(key.Get(), name, nullptr, &facts.type, nullptr,
                                          &facts.size) == ERROR_SUCCESS;
    return facts.found ? facts : ValueFacts();
}

void Report(bool* failed, bool value) {
    if (failed)
        *failed = value;
}
} // namespace

void NRegSetDefault(HKEY root, const wchar_t* subKey) {
    defaultRoot = root;
    defaultSubKey = subKey;
}

uint32_t NRegReadDword(const wchar_t* name, HKEY root, const wchar_t* subKey, bool* failed) {
    uint32_t value = 0;
    Report(failed, !ReadRaw(name, root, subKey, REG_DWORD, &value, sizeof(value)));
    return value;
}

bool NRegWriteDword(uint32_t value, const wchar_t* name, HKEY root, const wchar_t* subKey) {
    return WriteRaw(name, root, subKey, REG_DWORD, &value, sizeof(value));
}

NString NRegReadString(const wchar_t* name, HKEY root, const wchar_t* subKey, bool* failed) {
    // 1.
    bool sizeFailed = false;
    uint32_t size = NRegValueSize(name, root, subKey, &sizeFailed);
    Report(failed, sizeFailed);
    if (sizeFailed || size == 0)
        return NString();
    // 2. Room for a terminator, which the data may lack, behind an odd size too.
    std::vector<wchar_t> units(size / sizeof(wchar_t) + 2);
    bool done = ReadRaw(name, root, subKey, REG_SZ, units.data(), size);
    Report(failed, !done);
    // 3.
    return done ? NString(units.data()) : NString();
}

bool NRegWriteString(const wchar_t* text, const wchar_t* name, HKEY root, const wchar_t* subKey,
                     bool expand) {
    NString copy(text);
    return WriteRaw(name, root, subKey, expand ? REG_EXPAND_SZ : REG_SZ, copy.Text,
                    static_cast<uint32_t>(copy.Length) * sizeof(wchar_t));
}

bool NRegGetBinary(const wchar_t* name, void* buffer, uint32_t size, HKEY root,
                   const wchar_t* subKey) {
    return ReadRaw(name, root, subKey, REG_BINARY, buffer, size);
}

void NRegWriteBinary(const wchar_t* name, const void* data, uint32_t size, HKEY root,
                     const wchar_t* subKey) {
    WriteRaw(name, root, subKey, REG_BINARY, data, size);
}

bool NRegValueExists(const wchar_t* name, HKEY root, const wchar_t* subKey) {
    return Query(name, root, subKey).found;
}

uint32_t NRegValueSize(const wchar_t* name, HKEY root, const wchar_t* subKey, bool* failed) {
    ValueFacts facts = Query(name, root, subKey);
    Report(failed, !facts.found);
    return facts.size;
}

uint32_t NRegValueType(const wchar_t* name, HKEY root, const wchar_t* subKey, bool* failed) {
    ValueFacts facts = Query(name, root, subKey);
    Report(failed, !facts.found);
    return facts.type;
}

void NRegDeleteValue(const wchar_t* name, HKEY root, const wchar_t* subKey) {
    UniqueRegKey key = OpenKey(root, subKey, KEY_ALL_ACCESS);
    if (key)
        RegDeleteValueW(key.Get(), name);
}
