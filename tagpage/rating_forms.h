#pragma once

#include "codec/tag_record.h"

// A rating is a whole number of half steps in the file, and the number of steps
// on the page: 7 is shown as 3.5.

// What isn't a number counts as 0.
NString RatingToDisplay(const NString& halfSteps);
// What is left over of a half step is cut off.
NString RatingToFile(const NString& steps);

// Turn the value of each element "rating", ASCII case ignored.
void RatingsToDisplay(clTagRecord& tags);
void RatingsToFile(clTagRecord& tags);
