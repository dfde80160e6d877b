// Ids of the module's resources, read by the resource compiler too: nothing
// but plain definitions belongs here.
#pragma once

#define IDR_TYPE_LIBRARY 1       // of the type "TYPELIB"
#define IDR_REGISTRAR_SCRIPT 101 // of the type "REGISTRY"
