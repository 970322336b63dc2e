#include "vireling/palette/user_palette_inheritance.h"

#include "vireling/palette/user_palette.h"

#include <QChildEvent>
#include <QWidget>

namespace Vireling {

namespace {

QWidget *polishedChild(const QChildEvent &event)
{
    auto *child = qobject_cast<QWidget *>(event.child());
    return child && child->testAttribute(Qt::WA_WState_Polished) ? child : nullptr;
}

void propagateToChildren(const QWidget *parent)
{
    for (QWidget *child : parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        propagateUserPalette(parent, child);
}

class Inheritance final : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *parent = static_cast<QWidget *>(watched);
        if (event->type() == userPaletteChangeEvent())
            propagateToChildren(parent);
        else if (event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildPolished)
            propagateUserPalette(parent, polishedChild(*static_cast<QChildEvent *>(event)));
        return false;
    }
};

} // namespace

void inheritUserPalette(QWidget *widget)
{
    static Inheritance inheritance;
    widget->installEventFilter(&inheritance); // a filter already there is only moved to the front
}

} // namespace Vireling
