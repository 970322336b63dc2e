#include "vireling/window/window_edges.h"
