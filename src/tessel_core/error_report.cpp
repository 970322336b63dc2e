#include "tessel_core/error_report.h"
