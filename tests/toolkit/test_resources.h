// Ids of toolkit_tests.rc, read by the resource compiler too. The pictures are
// told in draw-test-resources.
#pragma once

#define IDI_MARK 1 // the program's first icon
#define IDI_MONO 2
#define IDB_GREYS 3
#define IDD_PLAIN 20 // 100 by 60 dialog units, with the button IDOK
#define IDI_MARKS 30 // to 37
