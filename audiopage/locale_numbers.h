#pragma once

#include "foundation/nstring.h"

#include <cstdint>

// How the user's locale writes numbers, as `Control Panel\International` below
// HKEY_CURRENT_USER keeps it. Each text holds at most 5 units, the rest of a
// longer one is cut.
struct LocaleNumbers {
    static constexpr int TextRoom = 6; // units, terminator included

    // The process's own record. It is read at the first need and not again: a
    // change of the region settings shows in the next process. Without a lock:
    // a second thread that comes during the first reading finds a record that
    // is partly filled, which is accepted.
    static const LocaleNumbers& Get();
    // The next Get reads again; for tests.
    static void Forget();

    bool Loaded = false;      // set before the others are read
    bool LeadingZero = false; // kept, and asked by nobody
    int32_t NegativeStyle = 0;
    bool IndianGrouping = false; // groups of 2 beyond the first 3 digits
    wchar_t NegativeSign[TextRoom] = {};
    wchar_t PositiveSign[TextRoom] = {};
    wchar_t ThousandSep[TextRoom] = {};
    wchar_t DecimalSep[TextRoom] = {};
    wchar_t TimeSep[TextRoom] = {};

private:
    void Load();
};

// Rewrites an optional "-", digits and an optional "." to the locale's form.
void ApplyLocaleNumber(NString& text);

NString FormatGroupedInt(int64_t value);
// Rounds as NString::FormatDouble, and shows no zeros at the end.
NString FormatGroupedDecimal(double value, int decimals);
