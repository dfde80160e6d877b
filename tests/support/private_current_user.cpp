#include "tests/support/private_current_user.h"

#include <stdexcept>

PrivateCurrentUser::PrivateCurrentUser(Kind kind) {
    DWORD options = kind == Kind::Unwritable ? REG_OPTION_VOLATILE : REG_OPTION_NON_VOLATILE;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, place_.Path(), 0, nullptr, options, KEY_ALL_ACCESS,
                        nullptr, key_.Put(), nullptr) != ERROR_SUCCESS ||
        RegOverridePredefKey(HKEY_CURRENT_USER, key_.Get()) != ERROR_SUCCESS)
        throw std::runtime_error("no private HKEY_CURRENT_USER");
}

PrivateCurrentUser::~PrivateCurrentUser() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
}
