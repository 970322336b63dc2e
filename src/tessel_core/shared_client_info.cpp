#include "tessel_core/shared_client_info.h"
