#pragma once

#include "foundation/nreg.h"
#include "tests/support/private_current_user.h"
#include "tests/support/temp_folder.h"

// Stands in for the user's settings and his folder for application data in this
// process for the time of the scope, both empty at first.
class PrivateAppData {
public:
    PrivateAppData() {
        NRegWriteString(folder_.Path().Text, L"AppData", HKEY_CURRENT_USER,
                        L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\"
                        L"User Shell Folders");
    }

    const TempFolder& Folder() const { return folder_; }

private:
    TempFolder folder_;
    PrivateCurrentUser user_;
};
