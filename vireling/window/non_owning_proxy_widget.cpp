#include "vireling/window/non_owning_proxy_widget.h"
