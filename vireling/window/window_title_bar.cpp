#include "vireling/window/window_title_bar.h"

#include "vireling/palette/fonts.h"
#include "vireling/widgets/elided_label.h"
#include "vireling/widgets/icon_label.h"
#include "vireling/window/frame_line.h"
#include "vireling/window/window_control.h"
#include "vireling/window/window_edges.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QShortcut>
#include <QStyle>

#include <algorithm>

namespace Vireling {

namespace {

/** The thickness of the line between title bar and contents; not scaled, like all frames. */
constexpr int separatorThickness = 1;

std::size_t indexOf(WindowControl control)
{
    return std::size_t(control);
}

QStyle::StandardPixmap iconOf(WindowControl control)
{
    switch (control) {
    case WindowControl::Close:
        return QStyle::SP_TitleBarCloseButton;
    case WindowControl::Maximise:
        return QStyle::SP_TitleBarMaxButton;
    case WindowControl::Minimise:
        return QStyle::SP_TitleBarMinButton;
    case WindowControl::Restore:
        break;
    }
    return QStyle::SP_TitleBarNormalButton;
}

} // namespace

WindowTitleBar::WindowTitleBar(QWidget *parent)
    : TranslatableWidget(parent)
    , iconLabel(new IconLabel(this))
    , titleLabel(new ElidedLabel(this))
    , row(new QHBoxLayout(this))
    , menu(this)
{
    setObjectName(QStringLiteral("windowTitleBar"));
    // By name, for whoever queues or records the signals.
    qRegisterMetaType<WindowControl>();
    qRegisterMetaType<WindowOperation>();
    for (const WindowControl control : windowControls)
        createControl(control);
    // The controls take no focus; this is their way in for the keyboard.
    auto *const menuShortcut = new QShortcut(QKeySequence(int(Qt::ALT) + int(Qt::Key_Space)), this);
    connect(menuShortcut, &QShortcut::activated, this,
            [this] { openWindowMenu(mapToGlobal(rect().bottomLeft())); });
    titleLabel->setFont(styleFont(FontWeight::Regular, FontSize::Large));
    iconLabel->hide(); // until there is an icon
    layOut();
}

WindowTitleBar::~WindowTitleBar() = default;

void WindowTitleBar::createControl(WindowControl control)
{
    auto *const action = new QAction(this);
    connect(action, &QAction::triggered, this, [this, control] { emit controlTriggered(control); });
    actions[indexOf(control)] = action;
    buttons[indexOf(control)] = new WindowControlButton(control, action, this);
}

void WindowTitleBar::layOut()
{
    row->setSpacing(0);
    row->addWidget(iconLabel, 0, Qt::AlignVCenter);
    row->addWidget(titleLabel, 1);
    // Maximise and Restore share a place: only one of them is ever visible.
    for (const WindowControl control : {WindowControl::Minimise, WindowControl::Maximise,
                                        WindowControl::Restore, WindowControl::Close})
        row->addWidget(controlButton(control), 0, Qt::AlignVCenter);
}

QString WindowTitleBar::title() const
{
    return titleLabel->text();
}

void WindowTitleBar::setTitle(const QString &title)
{
    titleLabel->setText(title);
}

QIcon WindowTitleBar::icon() const
{
    return iconLabel->icon();
}

void WindowTitleBar::setIcon(const QIcon &icon)
{
    iconLabel->setIcon(icon);
    iconLabel->setHidden(icon.isNull());
    spaceTitle();
}

QAction *WindowTitleBar::controlAction(WindowControl control) const
{
    return actions[indexOf(control)];
}

WindowControlButton *WindowTitleBar::controlButton(WindowControl control) const
{
    return buttons[indexOf(control)];
}

void WindowTitleBar::updateStyle()
{
    const auto metric = [this](QStyle::PixelMetric name) {
        return style()->pixelMetric(name, nullptr, this);
    };
    const int side = metric(QStyle::PM_TitleBarButtonSize);
    iconLabel->setFixedSize(side, side);
    row->setContentsMargins(metric(QStyle::PM_LayoutLeftMargin), 0,
                            metric(QStyle::PM_LayoutRightMargin), 0);
    for (const WindowControl control : windowControls)
        controlAction(control)->setIcon(style()->standardIcon(iconOf(control), nullptr, this));
    spaceTitle();
    setFixedHeight(styleHeight());
}

/** Without an icon the title begins where the contents below do. */
void WindowTitleBar::spaceTitle()
{
    const int gap = style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, this) / 2;
    const int start = iconLabel->isHidden() ? 0 : gap;
    titleLabel->setContentsMargins(isRightToLeft() ? gap : start, 0, isRightToLeft() ? start : gap,
                                   separatorThickness);
}

void WindowTitleBar::refreshMaximisedState()
{
    // The window changed its size under the pointer and no one tells the buttons
    // that they were left, nor that another took their place.
    for (WindowControlButton *const button : buttons)
        button->forgetPointer();
    row->activate();
}

int WindowTitleBar::styleHeight() const
{
    return std::max(style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this),
                    style()->pixelMetric(QStyle::PM_TitleBarButtonSize, nullptr, this));
}

QSize WindowTitleBar::sizeHint() const
{
    return {row->sizeHint().width(), styleHeight()};
}

QSize WindowTitleBar::minimumSizeHint() const
{
    return {row->minimumSize().width(), styleHeight()};
}

void WindowTitleBar::retranslate()
{
    for (const WindowControl control : windowControls)
        controlAction(control)->setText(windowControlText(control));
}

void WindowTitleBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::StyleChange)
        updateStyle();
    else if (event->type() == QEvent::LayoutDirectionChange)
        spaceTitle();
    TranslatableWidget::changeEvent(event);
}

void WindowTitleBar::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(0, height() - separatorThickness, width(), separatorThickness,
                            frameLineColour(*this));
}

bool WindowTitleBar::isOnIcon(const QPoint &point) const
{
    return !iconLabel->isHidden() && iconLabel->geometry().contains(point);
}

bool WindowTitleBar::isOnButton(const QPoint &point) const
{
    return std::any_of(buttons.begin(), buttons.end(), [&point](const QWidget *button) {
        return !button->isHidden() && button->geometry().contains(point);
    });
}

void WindowTitleBar::mousePressEvent(QMouseEvent *event)
{
    const QPoint point = wholePosition(event->localPos());
    if (event->button() != Qt::LeftButton || isOnButton(point))
        TranslatableWidget::mousePressEvent(event);
    else if (isOnIcon(point))
        openWindowMenu(mapToGlobal(iconLabel->geometry().bottomLeft()));
    else
        pressPoint = point;
    event->accept();
}

void WindowTitleBar::mouseMoveEvent(QMouseEvent *event)
{
    event->accept();
    if (!pressPoint || !(event->buttons() & Qt::LeftButton))
        return;
    const QPoint distance = wholePosition(event->localPos()) - *pressPoint;
    if (distance.manhattanLength() < QApplication::startDragDistance())
        return;
    pressPoint.reset();
    emit operationRequested(WindowOperation::Move);
}

void WindowTitleBar::mouseReleaseEvent(QMouseEvent *event)
{
    pressPoint.reset();
    TranslatableWidget::mouseReleaseEvent(event);
    event->accept();
}

void WindowTitleBar::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        TranslatableWidget::mouseDoubleClickEvent(event);
        event->accept();
        return;
    }
    pressPoint.reset();
    if (isOnButton(wholePosition(event->localPos())))
        TranslatableWidget::mouseDoubleClickEvent(event);
    else
        emit operationRequested(WindowOperation::ToggleMaximise);
    event->accept();
}

void WindowTitleBar::contextMenuEvent(QContextMenuEvent *event)
{
    openWindowMenu(event->reason() == QContextMenuEvent::Keyboard ? mapToGlobal(rect().bottomLeft())
                                                                  : event->globalPos());
    event->accept();
}

void WindowTitleBar::openWindowMenu(const QPoint &globalPosition)
{
    menu.clear();
    for (const WindowControl control : windowControls)
        if (controlAction(control)->isEnabled())
            menu.addAction(controlAction(control));
    if (!menu.isEmpty())
        menu.popup(globalPosition);
}

} // namespace Vireling
