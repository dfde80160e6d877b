// Ids of the module's resources, read by the resource compiler too: nothing
// but plain definitions belongs here.
#pragma once

#define IDR_TYPE_LIBRARY 1       // of the type "TYPELIB"
#define IDR_REGISTRAR_SCRIPT 101 // of the type "REGISTRY"

// Pictures of the context menu's items, 16 x 16.
#define IDB_CONVERT_TO 203
#define IDB_EDIT_ID_TAG 211

// The disc case around a cover, 99 x 90, with its opening of 88 x 88 at (10, 1).
#define IDB_ART_FRAME 236
