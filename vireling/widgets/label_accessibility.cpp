#include "vireling/widgets/label_accessibility.h"

#include "vireling/widgets/elided_label.h"
#include "vireling/widgets/icon_label.h"
#include "vireling/widgets/static_svg_widget.h"

#include <QAccessibleWidget>

namespace Vireling {

namespace {

class ElidedLabelInterface : public QAccessibleWidget
{
public:
    explicit ElidedLabelInterface(ElidedLabel *label)
        : QAccessibleWidget(label, QAccessible::StaticText)
    {}

    QString text(QAccessible::Text kind) const override
    {
        QString own = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Name || !own.isEmpty())
            return own;
        return static_cast<const ElidedLabel *>(widget())->text();
    }
};

QAccessibleInterface *createInterface(const QString &, QObject *object)
{
    if (auto *label = qobject_cast<ElidedLabel *>(object))
        return new ElidedLabelInterface(label);
    if (qobject_cast<IconLabel *>(object) || qobject_cast<StaticSvgWidget *>(object))
        return new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Graphic);
    return nullptr;
}

} // namespace

void registerLabelAccessibility()
{
    [[maybe_unused]] static const bool registered = [] {
        QAccessible::installFactory(createInterface);
        return true;
    }();
}

} // namespace Vireling
