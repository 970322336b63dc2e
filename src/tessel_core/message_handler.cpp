#include "tessel_core/message_handler.h"
