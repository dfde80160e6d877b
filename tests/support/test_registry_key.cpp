#include "tests/support/test_registry_key.h"

#include "foundation/unique_handle.h"

#include <atomic>

namespace {
std::atomic<int> keysMade;
}

TestRegistryKey::TestRegistryKey() : path_(L"Software\\Tonewright-test-") {
    path_.Append(NString::FromUInt(GetCurrentProcessId()));
    path_.Append(L"-");
    path_.Append(NString::FromInt(++keysMade));
    RegDeleteTreeW(HKEY_CURRENT_USER, path_.Text);
}

TestRegistryKey::~TestRegistryKey() {
    RegDeleteTreeW(HKEY_CURRENT_USER, path_.Text);
}

bool TestRegistryKey::Exists() const {
    UniqueRegKey key;
    return RegOpenKeyExW(HKEY_CURRENT_USER, path_.Text, 0, KEY_QUERY_VALUE, key.Put()) ==
           ERROR_SUCCESS;
}
