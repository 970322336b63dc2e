#include "support/kernel_fakes.h"
