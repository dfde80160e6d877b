// Ids of button_strips.rc, read by the resource compiler too. The strips are
// told in draw-button-strips.
#pragma once

#define IDB_STRIPS 1000 // and the flags
#define IDM_BUTTON 1500
#define ID_MENU_ONE 40001
#define ID_MENU_TWO 40002
#define ID_MENU_OTHER 40003 // in the second sub-menu
