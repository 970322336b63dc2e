#pragma once

#include <QtGlobal>

namespace Tessel
{

struct Version
{
    quint8 major;
    quint8 minor;
    quint8 patch;
    quint8 build;
};

} // namespace Tessel
