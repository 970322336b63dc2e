#pragma once

#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/*
 * A screen with a window manager of its own, from tools/x_session, and an operator
 * in front of it: eyes that see the pixels of the whole screen, and hands on a real
 * keyboard and pointer. Needs no event loop and no display. One thread.
 */
namespace TestSupport {

class XSession
{
public:
    /** Returns when the screen is up, its pointer in the upper left corner; isUp() tells. */
    explicit XSession(const QSize &size = QSize(1280, 800));

    /** Ends everything on the screen. */
    ~XSession();
    Q_DISABLE_COPY(XSession)

    bool isUp() const;

    /** What DISPLAY must be for programs that are to come up here. */
    QString display() const;

    /** Options of tools/sandbox that let a program in there reach this screen. */
    QStringList sandboxOptions() const;

    /** What the screen shows, null when it cannot be told. */
    QImage picture() const;
    QImage picture(const QRect &area) const;

    /** Title of the window with the focus, empty for none. */
    QString activeWindow() const;

    /** Where the visible window of that title is; empty for none. */
    QRect geometry(const QString &title) const;

    /**
     * Every window that was there at some time since the screen came up, but for the
     * window manager's own: "0x600006, 0x60000d" is a time when there were two.
     */
    QStringList windowsSoFar();

    /** Presses and releases keys by name, "Tab" or "alt+y", one after the other. */
    void press(const QStringList &keys) const;

    /** Types what the session's keyboard has; a line end is the Return key. */
    void type(const QString &text) const;

    void movePointer(QPoint to) const;

    /** Presses and releases the left button where the pointer is. */
    void click() const;

private:
    /** Dies with this process, however it dies. */
    class Process : public QProcess
    {
    protected:
        void setupChildProcess() override;
    };

    QByteArray run(const QStringList &xdotoolWords) const;

    QTemporaryDir frameBuffer;
    Process process;
    Process windowList;
    QByteArray name;
    QByteArray windows;
};

/** How many pixels differ from the first one: 0 where nothing is drawn. */
int inkIn(const QImage &picture);

/**
 * The smallest rectangle around all pixels in which two pictures of a size differ, by
 * more than the one step that a gradient may round otherwise when it is painted in
 * other pieces.
 */
QRect differenceOf(const QImage &one, const QImage &other);

/** The smallest rectangle around all pixels of exactly that colour. */
QRect areaOf(const QImage &picture, const QColor &colour);

} // namespace TestSupport
