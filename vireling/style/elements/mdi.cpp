#include "vireling/style/elements/mdi.h"

#include "vireling/style/design.h"
#include "vireling/style/paint_utils.h"
#include "vireling/style_icon_engine/style_icons.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

/** The buttons of a title bar from the trailing edge inwards. */
constexpr QStyle::SubControl titleBarButtons[] = {
    QStyle::SC_TitleBarCloseButton,      QStyle::SC_TitleBarUnshadeButton,
    QStyle::SC_TitleBarShadeButton,      QStyle::SC_TitleBarMaxButton,
    QStyle::SC_TitleBarNormalButton,     QStyle::SC_TitleBarMinButton,
    QStyle::SC_TitleBarContextHelpButton};

/** The buttons of a maximised window in the menu bar from the leading edge. */
constexpr QStyle::SubControl menuBarButtons[] = {
    QStyle::SC_MdiMinButton, QStyle::SC_MdiNormalButton, QStyle::SC_MdiCloseButton};

constexpr qreal menuBarButtonExtent = 20;

bool isShown(const QStyleOptionTitleBar &bar, QStyle::SubControl button)
{
    const bool minimised = bar.titleBarState & Qt::WindowMinimized;
    const bool maximised = bar.titleBarState & Qt::WindowMaximized;
    const Qt::WindowFlags flags = bar.titleBarFlags;
    switch (button) {
    case QStyle::SC_TitleBarCloseButton:
    case QStyle::SC_TitleBarSysMenu:
        return flags & Qt::WindowSystemMenuHint;
    case QStyle::SC_TitleBarUnshadeButton:
        return minimised && (flags & Qt::WindowShadeButtonHint);
    case QStyle::SC_TitleBarShadeButton:
        return !minimised && (flags & Qt::WindowShadeButtonHint);
    case QStyle::SC_TitleBarMaxButton:
        return !maximised && (flags & Qt::WindowMaximizeButtonHint);
    case QStyle::SC_TitleBarNormalButton:
        return (minimised && (flags & Qt::WindowMinimizeButtonHint)) ||
               (maximised && (flags & Qt::WindowMaximizeButtonHint));
    case QStyle::SC_TitleBarMinButton:
        return !minimised && (flags & Qt::WindowMinimizeButtonHint);
    case QStyle::SC_TitleBarContextHelpButton:
        return flags & Qt::WindowContextHelpButtonHint;
    default:
        return false;
    }
}

/** How far apart buttons start, and how large they are: a low bar has small ones. */
struct ButtonGrid
{
    explicit ButtonGrid(const ElementContext &context)
        : extent(std::max(
              0, std::min(context.metric(QStyle::PM_TitleBarButtonSize), context.rect().height())))
        , margin((context.rect().height() - extent) / 2)
    {}

    int extent;
    int margin;
};

/** What the system menu takes at the leading edge. */
int leadingRoom(const ButtonGrid &grid, const QStyleOptionTitleBar &bar)
{
    return isShown(bar, QStyle::SC_TitleBarSysMenu) ? grid.margin + grid.extent : 0;
}

/** Empty for a button that is not shown, or that a narrow title bar has no room for. */
QRect buttonRect(const ElementContext &context, const QStyleOptionTitleBar &bar,
                 QStyle::SubControl button)
{
    const ButtonGrid grid(context);
    const int first = context.rect().left() + leadingRoom(grid, bar);
    int right = context.rect().right() + 1 - grid.margin;
    for (const QStyle::SubControl each : titleBarButtons) {
        if (!isShown(bar, each))
            continue;
        right -= grid.extent;
        if (each == button && right >= first)
            return {right, context.rect().top() + grid.margin, grid.extent, grid.extent};
    }
    return {};
}

QRect systemMenuRect(const ElementContext &context)
{
    const ButtonGrid grid(context);
    return {context.rect().left() + grid.margin, context.rect().top() + grid.margin, grid.extent,
            grid.extent};
}

QRect labelRect(const ElementContext &context, const QStyleOptionTitleBar &bar)
{
    const ButtonGrid grid(context);
    const int padding = context.scaled(Design::fieldPadding);
    const int buttons = int(std::count_if(std::begin(titleBarButtons), std::end(titleBarButtons),
                                          [&](auto each) { return isShown(bar, each); }));
    return context.rect().adjusted(leadingRoom(grid, bar) + padding, 0,
                                   -(grid.margin + buttons * grid.extent + padding), 0);
}

struct Glyph
{
    QStyle::SubControl button;
    StyleIcon icon;
    Qt::ArrowType chevron = Qt::NoArrow; ///< drawn instead of the icon
};

constexpr Glyph glyphs[] = {
    {QStyle::SC_TitleBarCloseButton, StyleIcon::WindowClose},
    {QStyle::SC_TitleBarMaxButton, StyleIcon::WindowMaximise},
    {QStyle::SC_TitleBarNormalButton, StyleIcon::WindowRestore},
    {QStyle::SC_TitleBarMinButton, StyleIcon::WindowMinimise},
    {QStyle::SC_TitleBarShadeButton, StyleIcon::ExpandUp, Qt::UpArrow},
    {QStyle::SC_TitleBarUnshadeButton, StyleIcon::ExpandDown, Qt::DownArrow}};

constexpr Glyph menuBarGlyphs[] = {{QStyle::SC_MdiCloseButton, StyleIcon::WindowClose},
                                   {QStyle::SC_MdiNormalButton, StyleIcon::WindowRestore},
                                   {QStyle::SC_MdiMinButton, StyleIcon::WindowMinimise}};

/** The surface of a button, drawn only under the pointer or while held down. */
void paintButtonSurface(const ElementContext &context, const QRect &rect, bool active)
{
    QStyleOption button = context.option;
    button.rect = rect;
    if (!active || !(button.state & (QStyle::State_MouseOver | QStyle::State_Sunken)))
        return;
    const ElementContext inner = context.with(button);
    drawPanel(*context.painter, rect, context.scaledExactly(Design::controlRadius),
              buttonSurface(inner), frameColour(inner),
              context.metric(QStyle::PM_DefaultFrameWidth));
}

void paintGlyph(const ElementContext &context, const QRect &rect, const Glyph &glyph)
{
    const int extent = std::min(context.metric(QStyle::PM_TitleBarButtonIconSize), rect.height());
    const QRect box =
        QStyle::alignedRect(context.option.direction, Qt::AlignCenter, QSize(extent, extent), rect);
    // the icons for expanding are fainter than those of windows: they would look disabled here
    if (glyph.chevron != Qt::NoArrow)
        drawChevron(*context.painter, box, glyph.chevron, context.colour(QPalette::WindowText),
                    context.lineWidth(LineWidth::Glyph));
    else
        styleIcon(glyph.icon)
            .paint(context.painter, box, Qt::AlignCenter,
                   context.state.enabled ? QIcon::Normal : QIcon::Disabled);
}

template <std::size_t count>
void paintButtons(const ElementContext &context, QStyle::ComplexControl control,
                  const Glyph (&buttons)[count])
{
    const auto *complex = context.as<QStyleOptionComplex>();
    for (const Glyph &glyph : buttons) {
        if (!(complex->subControls & glyph.button))
            continue;
        const QRect rect =
            context.style.proxy()->subControlRect(control, complex, glyph.button, context.widget);
        if (rect.isEmpty())
            continue;
        paintButtonSurface(context, rect, complex->activeSubControls & glyph.button);
        paintGlyph(context, rect, glyph);
    }
}

void paintHelpButton(const ElementContext &context, const QStyleOptionTitleBar &bar)
{
    const QRect rect = context.style.proxy()->subControlRect(
        QStyle::CC_TitleBar, &bar, QStyle::SC_TitleBarContextHelpButton, context.widget);
    if (rect.isEmpty() || !(bar.subControls & QStyle::SC_TitleBarContextHelpButton))
        return;
    paintButtonSurface(context, rect, bar.activeSubControls & QStyle::SC_TitleBarContextHelpButton);
    context.painter->setPen(context.colour(QPalette::WindowText));
    context.painter->drawText(rect, Qt::AlignCenter, QStringLiteral("?"));
}

void paintTitle(const ElementContext &context, const QStyleOptionTitleBar &bar)
{
    const auto part = [&](QStyle::SubControl which) {
        return context.style.proxy()->subControlRect(QStyle::CC_TitleBar, &bar, which,
                                                     context.widget);
    };
    if (bar.subControls & QStyle::SC_TitleBarSysMenu && !bar.icon.isNull()) {
        const int extent = context.metric(QStyle::PM_SmallIconSize);
        bar.icon.paint(context.painter,
                       QStyle::alignedRect(bar.direction, Qt::AlignCenter, QSize(extent, extent),
                                           part(QStyle::SC_TitleBarSysMenu)));
    }
    const QRect text = part(QStyle::SC_TitleBarLabel);
    if (!(bar.subControls & QStyle::SC_TitleBarLabel) || text.isEmpty())
        return;
    const bool active = bar.titleBarState & int(QStyle::State_Active);
    context.painter->setPen(
        context.colour(active ? QPalette::WindowText : QPalette::PlaceholderText));
    const auto side = QStyle::visualAlignment(bar.direction, Qt::AlignLeft | Qt::AlignVCenter);
    context.painter->drawText(text, int(side) | Qt::TextSingleLine,
                              fittingText(bar.fontMetrics, bar.text, text.width()));
}

} // namespace

bool paintWindowFrame(const ElementContext &context)
{
    drawPanel(
        *context.painter, context.rect(), 0, QColor(),
        context.colour(context.state.inActiveWindow ? ColourRole::PanelFrame : ColourRole::Frame),
        context.metric(QStyle::PM_MdiSubWindowFrameWidth));
    return true;
}

bool paintMdiTitleBar(const ElementContext &context)
{
    const auto *bar = context.as<QStyleOptionTitleBar>();
    if (!bar)
        return false;
    const bool active = bar->titleBarState & int(QStyle::State_Active);
    QRect accent = context.rect();
    accent.setHeight(emphasisWidth(context));
    context.painter->fillRect(context.rect(), context.colour(ColourRole::HeaderBase));
    if (active)
        context.painter->fillRect(accent.intersected(context.rect()),
                                  context.colour(QPalette::Highlight));
    paintTitle(context, *bar);
    paintButtons(context, QStyle::CC_TitleBar, glyphs);
    paintHelpButton(context, *bar);
    return true;
}

std::optional<QRect> mdiTitleBarPart(const ElementContext &context, QStyle::SubControl part)
{
    const auto *bar = context.as<QStyleOptionTitleBar>();
    if (!bar)
        return std::nullopt;
    QRect rect;
    if (part == QStyle::SC_TitleBarLabel)
        rect = labelRect(context, *bar);
    else if (isShown(*bar, part))
        rect = part == QStyle::SC_TitleBarSysMenu ? systemMenuRect(context)
                                                  : buttonRect(context, *bar, part);
    return rect.isEmpty() ? QRect() : context.visual(rect);
}

bool paintMdiControls(const ElementContext &context)
{
    if (!context.as<QStyleOptionComplex>())
        return false;
    paintButtons(context, QStyle::CC_MdiControls, menuBarGlyphs);
    return true;
}

std::optional<QRect> mdiControlsPart(const ElementContext &context, QStyle::SubControl part)
{
    const auto *controls = context.as<QStyleOptionComplex>();
    if (!controls)
        return std::nullopt;
    int shown = 0;
    int index = -1;
    for (const QStyle::SubControl each : menuBarButtons) {
        if (!(controls->subControls & each))
            continue;
        if (each == part)
            index = shown;
        ++shown;
    }
    if (index < 0)
        return QRect();
    const int width = context.rect().width() / shown;
    return context.visual({context.rect().left() + index * width, context.rect().top(), width,
                           context.rect().height()});
}

std::optional<QSize> mdiControlsSize(const ElementContext &context)
{
    const auto *controls = context.as<QStyleOptionComplex>();
    if (!controls)
        return std::nullopt;
    const int shown = int(std::count_if(std::begin(menuBarButtons), std::end(menuBarButtons),
                                        [&](auto each) { return controls->subControls & each; }));
    const int extent = context.scaled(menuBarButtonExtent);
    return QSize(shown * extent, extent);
}

} // namespace Vireling
