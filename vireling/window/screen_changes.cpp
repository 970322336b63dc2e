#include "vireling/window/screen_changes.h"
