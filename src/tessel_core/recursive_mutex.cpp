#include "tessel_core/recursive_mutex.h"
