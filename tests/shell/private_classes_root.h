#pragma once

#include "foundation/unique_handle.h"
#include "foundation/windows_lean.h"

#include <map>
#include <string>
#include <vector>

// Stands in for HKEY_CLASSES_ROOT in this process, so that a registration can
// be looked at whole and touches no other program's.
class PrivateClassesRoot {
public:
    enum class Kind {
        Ordinary,
        // Nothing but volatile keys can be made below it, which the registrar
        // doesn't make: every write of a key fails.
        Unwritable,
    };
    explicit PrivateClassesRoot(Kind kind = Kind::Ordinary);
    ~PrivateClassesRoot();
    PrivateClassesRoot(const PrivateClassesRoot&) = delete;
    PrivateClassesRoot& operator=(const PrivateClassesRoot&) = delete;

    // All that is below it. A key is "Path\Of\Key" with the data "(key)", a
    // value is "Path\Of\Key|name" with its text. Paths below "TypeLib" and
    // "Interface", whose form is the platform's, are left out.
    std::map<std::wstring, std::wstring> Content() const;
    bool HasKey(const std::wstring& path) const;
    std::vector<std::wstring> KeysBelow(const std::wstring& path) const;
    // The default value of a key; empty if there is none.
    std::wstring Text(const std::wstring& path) const;
    void Write(const std::wstring& path, const wchar_t* name, const std::wstring& text) const;

private:
    std::wstring path_; // below HKEY_CURRENT_USER
    UniqueRegKey key_;
};
