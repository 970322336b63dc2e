#include "vireling/window/window.h"
