#include "tessel_core/watchdog.h"
