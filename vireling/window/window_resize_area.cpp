#include "vireling/window/window_resize_area.h"
