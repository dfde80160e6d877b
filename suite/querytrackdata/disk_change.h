#pragma once

// Called behind each call that changes something on the disk. The program
// links an empty one; the program of the tests that die links one that ends
// the process at the call it is told to.
void AfterDiskChange();
