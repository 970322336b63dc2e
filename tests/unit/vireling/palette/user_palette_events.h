#pragma once

#include "vireling/palette/user_palette.h"

#include <QObject>
#include <QWidget>

namespace Vireling {

inline UserPalette withRole(ColourRole role, const QColor &colour)
{
    UserPalette palette;
    palette.setBrush(role, QBrush(colour));
    return palette;
}

inline QColor shownColour(const QWidget &widget, ColourRole role)
{
    return effectiveUserPalette(&widget, widget.style()).brush(QPalette::Active, role).color();
}

/** Counts the changes of user palette a widget is told of. */
class UserPaletteEvents : public QObject
{
public:
    explicit UserPaletteEvents(QWidget *widget) { widget->installEventFilter(this); }

    int count = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == userPaletteChangeEvent())
            ++count;
        return false;
    }
};

} // namespace Vireling
