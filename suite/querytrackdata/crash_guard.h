#pragma once

// From now on a fault in this process ends it with exit code 1 and a line on
// standard error, as any other failure does, and with no window of the
// system's. A copy that was worked on stays behind for the next write to
// remove; the audio file is whole.
void GuardAgainstCrashes();
