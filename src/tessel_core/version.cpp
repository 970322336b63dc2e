#include "tessel_core/version.h"
