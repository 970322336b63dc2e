#include "tessel_core/log_file.h"
