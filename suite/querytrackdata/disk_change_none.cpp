#include "suite/querytrackdata/disk_change.h"

void AfterDiskChange() {}
void BeforeMoveRetry() {}
