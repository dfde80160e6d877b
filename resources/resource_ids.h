// Ids of the module's resources, read by the resource compiler too: nothing
// but plain definitions belongs here.
#pragma once

#define IDR_TYPE_LIBRARY 1       // of the type "TYPELIB"
#define IDR_REGISTRAR_SCRIPT 101 // of the type "REGISTRY"

// Pictures of the context menu's items, 16 x 16.
#define IDB_CONVERT_TO 203
#define IDB_EDIT_ID_TAG 211

// The icon of the module's own windows, 32 x 32.
#define IDI_SUITE 235

// The page Audio Properties: its dialog, without controls, its icon, and the
// menu of its button with the one command in it.
#define IDD_AUDIO_PAGE 206
#define IDI_AUDIO_PAGE 213
#define IDM_AUDIO_PAGE_OPTIONS 222
#define IDC_COPY_ROWS 32768

// Strips of its buttons: four frames, 34 high with their masks, and 68 wide, or
// 240 for the wide one.
#define IDB_SKIP_FIRST 215
#define IDB_SKIP_PREVIOUS 216
#define IDB_VIEW_SINGLE 217
#define IDB_SKIP_LAST 218
#define IDB_SKIP_NEXT 219
#define IDB_OPTIONS_MENU 220

// The stars of a rating, 32 x 14: a lit one and a dull one.
#define IDB_STARS 221

// Icons, 16 x 16: beside the tip of the clipboard, behind a value that was cut,
// and on a cover with others before it or behind it.
#define IDI_CLIPBOARD 223
#define IDI_CUT_VALUE 224
#define IDI_ARROW_LEFT 226
#define IDI_ARROW_RIGHT 227

// The disc case around a cover, 99 x 90, with its opening of 88 x 88 at (10, 1).
#define IDB_ART_FRAME 236

// The page ID-Tag: its dialog, without controls, and its icon. It has the skip
// buttons of the other page, and strips of its own: four frames, 34 high with
// their masks, and 240 wide, or 220 for those that change a tag's elements.
#define IDD_TAG_PAGE 205
#define IDI_TAG_PAGE 212
#define IDB_EDIT_SINGLE 228
#define IDB_REMOVE_ELEMENT 229
#define IDB_ADD_ELEMENT 230
#define IDB_CLEAR_TAGS 231
