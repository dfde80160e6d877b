#pragma once

// Both are places for tests to step in. The program links empty ones; the
// program of the tests that die links one that ends the process at the call it
// is told to.

// Called behind each call that changes something on the disk.
void AfterDiskChange();
// Called when the replacing move has failed and is to be tried again.
void BeforeMoveRetry();
