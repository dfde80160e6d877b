#pragma once

#include "foundation/nstring.h"

// The forms of the element "rating", which holds whole half steps from 0 to
// RatingMost, and of the native fields that stand for it. All functions take
// any number: what lies outside counts as the nearest end.
namespace tagmap {

inline constexpr int RatingMost = 10;

// The element's text as half steps. False, with `halfSteps` untouched, unless
// the text is one that RatingText gives.
bool ParseRating(const NString& text, int& halfSteps);
NString RatingText(int halfSteps);

// The rating byte of ID3v2's POPM frame, 0 to 255, and the e-mail of a frame
// that is made here; a frame with any e-mail is read.
inline constexpr char PopmEmail[] = "Windows Media Player 9 Series";
int PopmFromRating(int halfSteps);
int RatingFromPopm(int rating);

// WM/SharedUserRating of ASF, 0 to 99.
int AsfFromRating(int halfSteps);
int RatingFromAsf(int rating);

// RATING, `rate` and IRTD: a whole number from 0 to 100, as text.
NString PercentFromRating(int halfSteps);
// False unless the text is a number, which may have a fraction. Rounds to the
// nearest half step, up when in the middle.
bool RatingFromPercent(const NString& text, int& halfSteps);

// "RATING:email": a number from 0 to 1, as text.
NString FractionFromRating(int halfSteps);
bool RatingFromFraction(const NString& text, int& halfSteps);

} // namespace tagmap
