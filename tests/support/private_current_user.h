#pragma once

#include "foundation/unique_handle.h"
#include "tests/support/test_registry_key.h"

// Stands in for HKEY_CURRENT_USER in this process for the time of the scope,
// empty at first: settings can be written, and no other test sees them.
class PrivateCurrentUser {
public:
    enum class Kind {
        Ordinary,
        // No key can be made below it but volatile ones: each read and write
        // of a setting fails.
        Unwritable,
    };
    explicit PrivateCurrentUser(Kind kind = Kind::Ordinary);
    ~PrivateCurrentUser();
    PrivateCurrentUser(const PrivateCurrentUser&) = delete;
    PrivateCurrentUser& operator=(const PrivateCurrentUser&) = delete;

private:
    TestRegistryKey place_;
    UniqueRegKey key_;
};
