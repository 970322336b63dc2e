#include "vireling/window/message_box_frames.h"

#include "vireling/window/window_placement.h"
#include "vireling/window/window_proxy_base.h"
#include "vireling/window/window_title_bar.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <optional>

namespace Vireling {

namespace {

/** Whether exactly one of the buttons has that role. */
bool hasOne(const QMessageBox &box, QMessageBox::ButtonRole role)
{
    const QList<QAbstractButton *> buttons = box.buttons();
    return std::count_if(buttons.begin(), buttons.end(), [&](QAbstractButton *button) {
               return box.buttonRole(button) == role;
           }) == 1;
}

/**
 * Whether Escape will find a button to press. QMessageBox decides so when it is shown and
 * tells nobody: these are its rules. One without buttons is about to get an Ok; the button
 * for the details does not count.
 */
bool canBeEscaped(const QMessageBox &box)
{
    const int answers = box.buttons().size() - (box.detailedText().isEmpty() ? 0 : 1);
    return answers < 2 || box.escapeButton() || box.button(QMessageBox::Cancel) ||
           hasOne(box, QMessageBox::RejectRole) || hasOne(box, QMessageBox::NoRole);
}

/**
 * Qt makes the native window before it polishes the widget that is about to be shown:
 * setWindowFlags() would throw it away in the middle of showing.
 */
void setFlagsInPlace(QWidget &window, Qt::WindowFlags flags)
{
    window.overrideWindowFlags(flags);
    if (QWindow *const native = window.windowHandle())
        native->setFlags(flags);
}

/** The frame of one message box, which owns it. */
class MessageBoxFrame : public QObject
{
public:
    explicit MessageBoxFrame(QMessageBox &framedBox)
        : QObject(&framedBox)
        , box(framedBox)
    {
        setFlagsInPlace(box, box.windowFlags() | Qt::FramelessWindowHint);
        proxy.attach(&box);
        box.installEventFilter(this); // hears before the proxy does
    }

    /**
     * What the window system says of the size is not heeded: the first it tells may be a size
     * from before the box had its own, which must not become the one that is fixed.
     */
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!event->spontaneous() && event->type() == QEvent::Show)
            show();
        else if (!event->spontaneous() && event->type() == QEvent::Resize && box.isVisible())
            fit();
        return QObject::eventFilter(watched, event);
    }

private:
    void show()
    {
        setFlagsInPlace(box,
                        box.windowFlags().setFlag(Qt::WindowCloseButtonHint, canBeEscaped(box)));
        fit();
    }

    void fit()
    {
        fixSize();
        centre();
    }

    /**
     * QMessageBox fixes its size as well, but once the proxy has seen to the controls, which
     * would offer to maximise it, and wide enough for a title in a smaller font than ours.
     */
    void fixSize()
    {
        const int wanted = proxy.titleBar()->sizeHint().width() + 2 * proxy.frameWidth();
        const int room = box.screen()->availableGeometry().width();
        box.setFixedSize(box.size().expandedTo({std::min(wanted, room), 0}));
    }

    /**
     * Again at every new size: the box has its own only once it is being shown. As a whole
     * geometry: to move() the native window may still have the frame it was made with.
     */
    void centre()
    {
        if (box.testAttribute(Qt::WA_Moved) && box.geometry().topLeft() != place)
            return; // by someone else
        place = middlePlace(box);
        box.setGeometry({*place, box.size()}); // which also keeps QDialog from placing it
    }

    QMessageBox &box;
    WindowProxyBase proxy;
    std::optional<QPoint> place; // where it was put
};

/** Frames each message box when it is polished, the last moment before it has a size. */
class MessageBoxFrames : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Polish)
            if (auto *const box = qobject_cast<QMessageBox *>(watched); box && box->isWindow())
                new MessageBoxFrame(*box); // the box's
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

void frameMessageBoxes()
{
    qApp->installEventFilter(new MessageBoxFrames(qApp));
}

} // namespace Vireling
