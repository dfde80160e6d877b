#pragma once

#include "foundation/nlists.h"
#include "foundation/nmutex.h"
#include "foundation/windows_lean.h"

#include <cstdint>

class NWindow;

// All bound NWindows of the process, which are on several threads.
extern NPtrList windowRegistry;
// Guards what stands in this header; held for a search or a change, never
// while a handler runs.
extern NMutex registryLock;
extern uint32_t classCounter; // of the next window class's name

// At the end, unless it is in the list already.
void AddToRegistry(NWindow* object);
void RemoveFromRegistry(const NWindow* object);
// The first object of this window; null if none is bound to it. The list is
// short, so it is simply searched.
NWindow* FindInRegistry(HWND window);
// Takes a number from `classCounter`.
uint32_t NextClassNumber();
