#include "tessel_core/log.h"
