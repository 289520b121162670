#include "FuzzTarget.h"
TANDREL_FUZZ_TARGET(fuzzcheck::keptGame)
