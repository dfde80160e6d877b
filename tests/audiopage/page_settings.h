#pragma once

#include "audiopage/locale_numbers.h"
#include "foundation/nreg.h"
#include "foundation/windows_lean.h"
#include "tests/shell/private_classes_root.h"
#include "tests/support/private_current_user.h"

#include <gtest/gtest.h>

// The user's settings and the types of files as the page reads them: empty at
// the start, but that numbers have "," between thousands.
class PageSettings : public testing::Test {
protected:
    PageSettings() {
        LocaleNumbers::Forget();
        SetLocale(L"sThousand", L",");
    }
    ~PageSettings() override { LocaleNumbers::Forget(); }

    void SetUnit(const wchar_t* name, uint32_t value) {
        NRegWriteDword(value, name, HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Tonewright\\Ref");
    }
    // Has no effect once the numbers have been read.
    void SetLocale(const wchar_t* name, const wchar_t* value) {
        NRegWriteString(value, name, HKEY_CURRENT_USER, L"Control Panel\\International");
    }
    // As in another process whose user has changed one setting.
    void ChangeLocale(const wchar_t* name, const wchar_t* value) {
        LocaleNumbers::Forget();
        SetLocale(name, value);
    }

private:
    PrivateCurrentUser user_;
    PrivateClassesRoot classes_; // to ask for a type makes its key
};
