#include "support/sandbox_run.h"
