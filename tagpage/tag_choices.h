#pragma once

#include "foundation/nlists.h"
#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// What the rows of the ID-Tag page offer to choose from. Each function appends
// to `choices`. Window's thread only.

// Which of the lists the row of an element offers, by its name with ASCII case
// ignored.
enum class TagChoices { None, Track, Year, Genre };
TagChoices TagChoicesFor(const NString& name);

// Appends the list; nothing for None.
void AddChoices(TagChoices which, NStringList& choices);

// "1" to "99".
void AddTrackChoices(NStringList& choices);
// The year of `today` down to 1920; none for an earlier one.
void AddYearChoices(NStringList& choices, const SYSTEMTIME& today);

// The names of elements that the page offers to add, as the user sees them and
// in their order. Ends at a row that begins with a zero unit.
inline constexpr int TagFieldNameRoom = 40; // units, terminator included
extern const wchar_t TagFieldNames[][TagFieldNameRoom];
void AddTagFieldNames(NStringList& choices);
