#include "support/package_reader.h"
