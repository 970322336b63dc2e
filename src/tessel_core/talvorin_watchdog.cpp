#include "tessel_core/talvorin_watchdog.h"
