#include "support/log_capture.h"
