#include "tessel_core/io/file_archive.h"
