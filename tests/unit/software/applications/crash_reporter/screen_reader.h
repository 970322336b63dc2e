#pragma once

#include <QStringList>

class QWidget;

namespace TestSupport {

/** Hears what programs that assist the operator are told while it lives. One at a time. */
class ScreenReader
{
public:
    ScreenReader();
    ~ScreenReader();
    Q_DISABLE_COPY(ScreenReader)

    /** Each name the widget took, in order. */
    QStringList namesOf(const QWidget &widget) const;
    bool heardHiding(const QWidget &widget) const;
};

} // namespace TestSupport
