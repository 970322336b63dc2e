#pragma once

#include <QtGlobal>

namespace Vireling {

template <typename T>
class WindowProxy : public T
{
public:
    using T::T;
};

} // namespace Vireling
