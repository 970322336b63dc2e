#include "vireling/style/style_polish.h"

#include "vireling/palette/palette.h"
#include "vireling/palette/user_palette.h"
#include "vireling/style/style.h"
#include "vireling/style/style_input_focus_helper.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QSpacerItem>
#include <QSplitterHandle>
#include <QTabBar>
#include <QTableView>
#include <QVariant>

#include <initializer_list>

Q_DECLARE_METATYPE(QSpacerItem *)

namespace Vireling {

namespace {

/** The least width of a message box's contents, in design pixels. */
constexpr int messageBoxWidth = 320;

constexpr std::initializer_list<QPalette::ColorGroup> colourGroups{
    QPalette::Active, QPalette::Disabled, QPalette::Inactive};

struct RoleMapping
{
    QPalette::ColorRole to;
    ColourRole from;
};

QPalette mapped(QPalette palette, const Palette &stylePalette,
                std::initializer_list<RoleMapping> mappings)
{
    for (const RoleMapping &mapping : mappings)
        for (const QPalette::ColorGroup group : colourGroups)
            palette.setBrush(group, mapping.to, stylePalette.brush(group, mapping.from));
    return palette;
}

QPalette headerPalette(const QPalette &palette, const Palette &stylePalette)
{
    return mapped(palette, stylePalette,
                  {{QPalette::Base, ColourRole::HeaderBase},
                   {QPalette::Button, ColourRole::HeaderBase},
                   {QPalette::Text, ColourRole::HeaderText},
                   {QPalette::ButtonText, ColourRole::HeaderText}});
}

QPalette tablePalette(const QPalette &palette, const Palette &stylePalette)
{
    return mapped(palette, stylePalette,
                  {{QPalette::Base, ColourRole::CellBase},
                   {QPalette::AlternateBase, ColourRole::CellAltBase},
                   {QPalette::Text, ColourRole::CellText},
                   {QPalette::Highlight, ColourRole::ViewItemActiveBase},
                   {QPalette::HighlightedText, ColourRole::ViewItemActiveText}});
}

QPalette itemViewPalette(const QPalette &palette, const Palette &stylePalette)
{
    return mapped(palette, stylePalette,
                  {{QPalette::Base, ColourRole::ViewItemBase},
                   {QPalette::AlternateBase, ColourRole::ViewItemAltBase},
                   {QPalette::Text, ColourRole::ViewItemText},
                   {QPalette::Highlight, ColourRole::ViewItemActiveBase},
                   {QPalette::HighlightedText, ColourRole::ViewItemActiveText}});
}

/** The title of an inactive window is drawn in the placeholder colour, so that it steps back. */
QPalette titleBarPalette(QPalette palette, const Palette &stylePalette)
{
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText}) {
        for (const QPalette::ColorGroup group : colourGroups)
            palette.setBrush(group, role, stylePalette.QPalette::brush(group, role));
        palette.setBrush(QPalette::Inactive, role, stylePalette.placeholderText());
    }
    return palette;
}

bool isTitleBar(const QWidget *widget)
{
    return widget->inherits("Vireling::WindowTitleBar");
}

/** Whether the control looks different under the pointer and must hear of it. */
bool followsPointer(const QWidget *widget)
{
    return qobject_cast<const QAbstractButton *>(widget) ||
           qobject_cast<const QComboBox *>(widget) ||
           qobject_cast<const QAbstractSpinBox *>(widget) ||
           qobject_cast<const QAbstractSlider *>(widget) ||
           qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QTabBar *>(widget) ||
           qobject_cast<const QGroupBox *>(widget) || qobject_cast<const QHeaderView *>(widget) ||
           qobject_cast<const QMenuBar *>(widget) || qobject_cast<const QSplitterHandle *>(widget);
}

} // namespace

void polishByClass(QWidget *widget, const Palette &stylePalette)
{
    if (qobject_cast<QHeaderView *>(widget))
        widget->setPalette(headerPalette(widget->palette(), stylePalette));
    else if (qobject_cast<QTableView *>(widget))
        widget->setPalette(tablePalette(widget->palette(), stylePalette));
    else if (qobject_cast<QAbstractItemView *>(widget))
        widget->setPalette(itemViewPalette(widget->palette(), stylePalette));
    else if (isTitleBar(widget))
        widget->setPalette(titleBarPalette(widget->palette(), stylePalette));
    if (followsPointer(widget))
        widget->setAttribute(Qt::WA_Hover);
}

void unpolishByClass(QWidget *widget)
{
    if (qobject_cast<QAbstractItemView *>(widget) || isTitleBar(widget))
        widget->setPalette(QPalette());
    if (followsPointer(widget))
        widget->setAttribute(Qt::WA_Hover, false);
}

void polishMessageBox(QWidget *widget, const Style &style)
{
    auto *box = qobject_cast<QMessageBox *>(widget);
    auto *grid = box ? qobject_cast<QGridLayout *>(box->layout()) : nullptr;
    if (!grid)
        return;
    auto *spacer = grid->property(messageBoxSpacerProperty).value<QSpacerItem *>();
    if (!spacer) {
        spacer = new QSpacerItem(0, 0);
        grid->addItem(spacer, grid->rowCount(), 0, -1, -1);
        grid->setProperty(messageBoxSpacerProperty, QVariant::fromValue(spacer));
    }
    spacer->changeSize(style.scaled(messageBoxWidth, nullptr, box), 0);
}

void Style::polish(QWidget *widget)
{
    QCommonStyle::polish(widget);
    propagateUserPalette(widget->parentWidget(), widget);
    polishByClass(widget, palette());
    polishMessageBox(widget, *this);
    inputFocusHelper->watch(widget);
}

void Style::unpolish(QWidget *widget)
{
    inputFocusHelper->unwatch(widget);
    unpolishByClass(widget);
    QCommonStyle::unpolish(widget);
}

} // namespace Vireling
