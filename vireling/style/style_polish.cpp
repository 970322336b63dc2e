#include "vireling/style/style_polish.h"

#include "vireling/palette/contrast.h"
#include "vireling/palette/palette.h"
#include "vireling/palette/user_palette.h"
#include "vireling/style/busy_indicator_animator.h"
#include "vireling/style/combo_popup.h"
#include "vireling/style/style.h"
#include "vireling/style/style_input_focus_helper.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenuBar>
#include <QMessageBox>
#include <QScrollBar>
#include <QSpacerItem>
#include <QSplitterHandle>
#include <QTabBar>
#include <QTableView>
#include <QTextCharFormat>
#include <QVariant>
#include <QWizard>

#include <algorithm>
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
using RoleMappings = std::initializer_list<RoleMapping>;

/** Headers, and the button in the corner between a table's two. */
constexpr RoleMappings headerRoles{{QPalette::Base, ColourRole::HeaderBase},
                                   {QPalette::Button, ColourRole::HeaderBase},
                                   {QPalette::Text, ColourRole::HeaderText},
                                   {QPalette::ButtonText, ColourRole::HeaderText}};

constexpr RoleMappings tableRoles{{QPalette::Text, ColourRole::CellText},
                                  {QPalette::HighlightedText, ColourRole::ViewItemActiveText}};

constexpr RoleMappings itemViewRoles{{QPalette::Base, ColourRole::ViewItemBase},
                                     {QPalette::AlternateBase, ColourRole::ViewItemAltBase},
                                     {QPalette::Text, ColourRole::ViewItemText},
                                     {QPalette::HighlightedText, ColourRole::ViewItemActiveText}};

void setRoles(QWidget *widget, const Palette &stylePalette, RoleMappings mappings)
{
    QPalette palette = widget->palette();
    for (const RoleMapping &mapping : mappings)
        for (const QPalette::ColorGroup group : colourGroups)
            palette.setBrush(group, mapping.to, stylePalette.brush(group, mapping.from));
    widget->setPalette(palette);
}

void setCellGrounds(QWidget *table, const Palette &stylePalette)
{
    QPalette palette = table->palette();
    for (const QPalette::ColorGroup group : colourGroups) {
        const CellGrounds grounds = cellGrounds(stylePalette, group);
        palette.setBrush(group, QPalette::Base, grounds.base);
        palette.setBrush(group, QPalette::AlternateBase, grounds.alternate);
    }
    table->setPalette(palette);
}

void setViewRoles(QWidget *view, const Palette &stylePalette, RoleMappings mappings)
{
    setRoles(view, stylePalette, mappings);
    QPalette palette = view->palette();
    for (const QPalette::ColorGroup group : colourGroups)
        palette.setBrush(group, QPalette::Highlight, selectedRowBase(stylePalette, group));
    view->setPalette(palette);
}

/** Gives the widget the style's own roles where it has inherited those of a view's rows. */
void setStyleRoles(QWidget *widget, const Palette &stylePalette,
                   std::initializer_list<QPalette::ColorRole> roles)
{
    QPalette palette = widget->palette();
    for (const QPalette::ColorRole role : roles)
        for (const QPalette::ColorGroup group : colourGroups)
            palette.setBrush(group, role, stylePalette.QPalette::brush(group, role));
    widget->setPalette(palette);
}

void polishHeader(QWidget *header, const Palette &stylePalette)
{
    setStyleRoles(header, stylePalette, {QPalette::Highlight, QPalette::HighlightedText});
    setRoles(header, stylePalette, headerRoles);
}

/** What a calendar shows above its days: a header whose ground Qt takes from the highlight. */
constexpr RoleMappings calendarBarRoles{{QPalette::Highlight, ColourRole::HeaderBase},
                                        {QPalette::HighlightedText, ColourRole::HeaderText},
                                        {QPalette::ButtonText, ColourRole::HeaderText}};

bool isCalendarBar(const QWidget *widget)
{
    return widget->objectName() == QLatin1String("qt_calendar_navigationbar");
}

/** A calendar is a table whose days are no cells: they look like the items of a list. */
bool isCalendar(const QWidget *widget)
{
    return widget->inherits("QCalendarView");
}

void polishTable(QWidget *table, const Palette &stylePalette)
{
    setCellGrounds(table, stylePalette);
    setViewRoles(table, stylePalette, tableRoles);
}

/** The line below a page's title is drawn in Mid, which is the window's own colour here. */
constexpr RoleMappings wizardRoles{{QPalette::Mid, ColourRole::Frame}};

/** The title of an inactive window is drawn in the placeholder colour, so that it steps back. */
void polishTitleBar(QWidget *titleBar, const Palette &stylePalette)
{
    QPalette palette = titleBar->palette();
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText}) {
        for (const QPalette::ColorGroup group : colourGroups)
            palette.setBrush(group, role, stylePalette.QPalette::brush(group, role));
        palette.setBrush(QPalette::Inactive, role, stylePalette.placeholderText());
    }
    titleBar->setPalette(palette);
}

bool isTitleBar(const QWidget *widget)
{
    return widget->inherits("Vireling::WindowTitleBar");
}

bool isTableCorner(const QWidget *widget)
{
    return widget->inherits("QTableCornerButton");
}

/** Editors and widgets set on items, and on calendars: they are drawn like any others. */
bool isOnItem(const QWidget *widget)
{
    const QWidget *viewport = widget->parentWidget();
    const auto *view =
        qobject_cast<const QAbstractItemView *>(viewport ? viewport->parentWidget() : nullptr);
    if (view)
        return view->viewport() == viewport && !qobject_cast<const QAbstractItemView *>(widget);
    return viewport && isCalendarBar(viewport) && qobject_cast<const QAbstractSpinBox *>(widget);
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

/** The widget that hears of the pointer for `widget`: the items of a view are on its viewport. */
QWidget *pointerFollower(QWidget *widget)
{
    if (followsPointer(widget))
        return widget;
    const auto *view = qobject_cast<const QAbstractItemView *>(widget);
    return view ? view->viewport() : nullptr;
}

/** Qt paints weekends red, which reads on no ground of either theme: bold does on both. */
void polishCalendar(QCalendarWidget &calendar)
{
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
        QTextCharFormat format = calendar.weekdayTextFormat(day);
        if (format.foreground() != QBrush(Qt::red))
            continue; // the application's own choice
        format.clearForeground();
        format.setFontWeight(QFont::Bold);
        calendar.setWeekdayTextFormat(day, format);
    }
}

/** On a QMdiArea: that its background is the style's and not the application's own choice. */
constexpr char mdiGroundProperty[] = "vrl_style_mdi_ground";

QBrush defaultMdiGround()
{
    return QApplication::palette().brush(QPalette::Dark);
}

/** Qt fills an area of sub-windows with Dark: in the light theme as dark as their text. */
void polishMdiArea(QMdiArea &area, const Palette &stylePalette)
{
    if (area.background() != defaultMdiGround() && !area.property(mdiGroundProperty).toBool())
        return;
    area.setBackground(stylePalette.brush(QPalette::Active, ColourRole::ViewItemAltBase));
    area.setProperty(mdiGroundProperty, true);
}

void unpolishMdiArea(QMdiArea &area)
{
    if (!area.property(mdiGroundProperty).toBool())
        return;
    area.setBackground(defaultMdiGround());
    area.setProperty(mdiGroundProperty, QVariant());
}

QGridLayout *messageBoxGrid(const QWidget *widget)
{
    const auto *box = qobject_cast<const QMessageBox *>(widget);
    return box ? qobject_cast<QGridLayout *>(box->layout()) : nullptr;
}

QSpacerItem *spacerOf(const QGridLayout *grid)
{
    return grid->property(messageBoxSpacerProperty).value<QSpacerItem *>();
}

} // namespace

QColor selectedRowBase(const Palette &palette, QPalette::ColorGroup group)
{
    QColor base = palette.colour(group, ColourRole::ViewItemActiveBase);
    if (group == QPalette::Disabled)
        return base;
    const QColor text = palette.colour(group, ColourRole::ViewItemActiveText);
    return darkened(base, darkeningForText(base, text));
}

CellGrounds cellGrounds(const Palette &palette, QPalette::ColorGroup group)
{
    // Both by as much as the one that needs it more: rows must go on alternating. In
    // every group alike: a table that is disabled must not light up.
    const QColor text = palette.colour(QPalette::Active, ColourRole::CellText);
    const auto needed = [&](ColourRole role) {
        return darkeningForText(palette.colour(QPalette::Active, role), text);
    };
    const qreal black = std::max(needed(ColourRole::CellBase), needed(ColourRole::CellAltBase));
    return {darkened(palette.colour(group, ColourRole::CellBase), black),
            darkened(palette.colour(group, ColourRole::CellAltBase), black)};
}

QColor selectedRowAccent(const Palette &palette, QPalette::ColorGroup group)
{
    const QColor &accent = palette.color(group, QPalette::Highlight);
    if (contrastRatio(accent, selectedRowBase(palette, group)) >= shapeContrast)
        return accent;
    return palette.colour(group, ColourRole::ViewItemActiveText);
}

void polishByClass(QWidget *widget, const Palette &stylePalette)
{
    if (qobject_cast<QHeaderView *>(widget) || isTableCorner(widget))
        polishHeader(widget, stylePalette);
    else if (qobject_cast<QTableView *>(widget) && !isCalendar(widget))
        polishTable(widget, stylePalette);
    else if (qobject_cast<QAbstractItemView *>(widget))
        setViewRoles(widget, stylePalette, itemViewRoles);
    else if (isTitleBar(widget))
        polishTitleBar(widget, stylePalette);
    else if (qobject_cast<QWizard *>(widget))
        setRoles(widget, stylePalette, wizardRoles);
    else if (isCalendarBar(widget))
        setRoles(widget, stylePalette, calendarBarRoles);
    else if (isOnItem(widget) && !widget->testAttribute(Qt::WA_SetPalette))
        setStyleRoles(widget, stylePalette,
                      {QPalette::Base, QPalette::AlternateBase, QPalette::Text, QPalette::Highlight,
                       QPalette::HighlightedText});
    if (QWidget *follower = pointerFollower(widget))
        follower->setAttribute(Qt::WA_Hover);
    // Their grooves are clear: what lies below has to be painted first.
    if (qobject_cast<QScrollBar *>(widget))
        widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
}

void unpolishByClass(QWidget *widget)
{
    if (qobject_cast<QAbstractItemView *>(widget) || isTitleBar(widget) || isTableCorner(widget) ||
        isCalendarBar(widget) || isOnItem(widget) || qobject_cast<QWizard *>(widget))
        widget->setPalette(QPalette());
    if (QWidget *follower = pointerFollower(widget))
        follower->setAttribute(Qt::WA_Hover, false);
    if (qobject_cast<QScrollBar *>(widget))
        widget->setAttribute(Qt::WA_OpaquePaintEvent);
}

void polishMessageBox(QWidget *widget, const Style &style)
{
    QGridLayout *grid = messageBoxGrid(widget);
    if (!grid)
        return;
    QSpacerItem *spacer = spacerOf(grid);
    if (!spacer) {
        spacer = new QSpacerItem(0, 0);
        grid->addItem(spacer, grid->rowCount(), 0, -1, -1);
        grid->setProperty(messageBoxSpacerProperty, QVariant::fromValue(spacer));
    }
    spacer->changeSize(style.scaled(messageBoxWidth, nullptr, widget), 0);
    grid->invalidate(); // a changed spacer does not say so itself
}

void unpolishMessageBox(QWidget *widget)
{
    QGridLayout *grid = messageBoxGrid(widget);
    QSpacerItem *spacer = grid ? spacerOf(grid) : nullptr;
    if (!spacer)
        return;
    grid->removeItem(spacer);
    grid->setProperty(messageBoxSpacerProperty, QVariant());
    delete spacer;
}

void Style::polish(QWidget *widget)
{
    QCommonStyle::polish(widget);
    propagateUserPalette(widget->parentWidget(), widget);
    polishByClass(widget, palette());
    polishMessageBox(widget, *this);
    if (auto *calendar = qobject_cast<QCalendarWidget *>(widget))
        polishCalendar(*calendar);
    if (auto *area = qobject_cast<QMdiArea *>(widget))
        polishMdiArea(*area, palette());
    polishComboPopup(widget);
    inputFocusHelper->watch(widget);
    busyAnimator->watch(widget);
}

void Style::unpolish(QWidget *widget)
{
    busyAnimator->unwatch(widget);
    inputFocusHelper->unwatch(widget);
    if (auto *area = qobject_cast<QMdiArea *>(widget))
        unpolishMdiArea(*area);
    unpolishMessageBox(widget);
    unpolishByClass(widget);
    QCommonStyle::unpolish(widget);
}

} // namespace Vireling
