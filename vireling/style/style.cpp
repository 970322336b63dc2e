#include "vireling/style/style.h"

#include "vireling/palette/theme.h"
#include "vireling/style/busy_indicator_animator.h"
#include "vireling/style/style_input_focus_helper.h"
#include "vireling/style_icon_engine/style_icons.h"

#include <QGuiApplication>
#include <QLineEdit>
#include <QStyleOption>
#include <QVariant>

namespace Vireling {

Style::Style()
    : Style(themePalette(Theme::Dark))
{}

Style::Style(const Palette &palette)
    : ownPalette(palette)
    , inputFocusHelper(new StyleInputFocusHelper(this))
    , busyAnimator(new BusyIndicatorAnimator(this))
{}

Style::~Style() = default;

void Style::setDisplayCharCount(QLineEdit *lineEdit, std::optional<int> count)
{
    if (!lineEdit)
        return;
    if (count)
        lineEdit->setProperty(displayCharCountProperty, *count);
    lineEdit->updateGeometry();
}

std::optional<int> Style::displayCharCount(const QWidget *widget)
{
    const QVariant value = widget ? widget->property(displayCharCountProperty) : QVariant();
    if (!value.isValid())
        return std::nullopt;
    return value.toInt();
}

QPalette Style::standardPalette() const
{
    return ownPalette;
}

void Style::polish(QPalette &palette)
{
    palette = ownPalette;
}

QIcon Style::standardIcon(StandardPixmap standardIcon, const QStyleOption *option,
                          const QWidget *widget) const
{
    const bool rightToLeft =
        option ? option->direction == Qt::RightToLeft : QGuiApplication::isRightToLeft();
    switch (standardIcon) {
    case SP_ArrowUp:
        return styleIcon(StyleIcon::ArrowUp);
    case SP_ArrowDown:
        return styleIcon(StyleIcon::ArrowDown);
    case SP_ArrowLeft:
        return styleIcon(StyleIcon::ArrowLeft);
    case SP_ArrowRight:
        return styleIcon(StyleIcon::ArrowRight);
    case SP_ArrowBack:
        return styleIcon(rightToLeft ? StyleIcon::ArrowRight : StyleIcon::ArrowLeft);
    case SP_ArrowForward:
        return styleIcon(rightToLeft ? StyleIcon::ArrowLeft : StyleIcon::ArrowRight);
    case SP_ToolBarHorizontalExtensionButton:
        return styleIcon(rightToLeft ? StyleIcon::ExpandLeft : StyleIcon::ExpandRight);
    case SP_ToolBarVerticalExtensionButton:
        return styleIcon(StyleIcon::ExpandDown);
    case SP_LineEditClearButton:
        return styleIcon(StyleIcon::EditClear);
    case SP_TitleBarCloseButton:
    case SP_DockWidgetCloseButton:
        return styleIcon(StyleIcon::WindowClose);
    case SP_TitleBarMaxButton:
        return styleIcon(StyleIcon::WindowMaximise);
    case SP_TitleBarMinButton:
        return styleIcon(StyleIcon::WindowMinimise);
    case SP_TitleBarNormalButton:
        return styleIcon(StyleIcon::WindowRestore);
    default:
        return QCommonStyle::standardIcon(standardIcon, option, widget);
    }
}

} // namespace Vireling
