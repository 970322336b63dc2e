#include "vireling/window/window_title_bar.h"
