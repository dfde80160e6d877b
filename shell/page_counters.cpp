#include "shell/page_counters.h"

UINT audioPageReferences = 0;
UINT idTagPageReferences = 0;
