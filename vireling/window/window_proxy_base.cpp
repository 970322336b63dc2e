#include "vireling/window/window_proxy_base.h"
