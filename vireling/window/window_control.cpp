#include "vireling/window/window_control.h"
