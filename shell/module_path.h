#pragma once

#include "foundation/nstring.h"

// The full path of this module's file, whatever its length. Empty if the
// platform can't tell it.
NString NRunningModulePath();
