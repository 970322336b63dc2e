#include "vireling/style_icon_engine/style_icon_engine.h"
namespace Vireling {}
