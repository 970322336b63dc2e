#include "tessel_core/thread.h"
