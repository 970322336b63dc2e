#include "vireling/window/window_control_button.h"
