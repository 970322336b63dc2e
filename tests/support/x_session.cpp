#include "support/x_session.h"

#include <QColor>
#include <QFile>
#include <QtEndian>

#include <csignal>
#include <functional>
#include <sys/prctl.h>

namespace TestSupport {

namespace {

constexpr int startTime = 30000;
constexpr int commandTime = 10000;
/** A list of windows that has not come after this was not sent. */
constexpr int listTime = 200;

const QString sessionProgram = QStringLiteral(R4_TOOLS_FOLDER "/x_session");

/** Some of the big-endian words that an XWD file begins with. */
enum HeaderWord
{
    HeaderSize = 0,
    Width = 4,
    Height = 5,
    BitsPerPixel = 11,
    BytesPerLine = 12,
    ColourCount = 19,
    WordsNeeded
};

constexpr int bytesOfColour = 12;

int headerWord(const QByteArray &file, HeaderWord word)
{
    return int(qFromBigEndian<quint32>(file.constData() + 4 * word));
}

QImage pictureFromXwd(const QByteArray &file)
{
    if (file.size() < 4 * WordsNeeded || headerWord(file, BitsPerPixel) != 32)
        return {};
    const int offset = headerWord(file, HeaderSize) + bytesOfColour * headerWord(file, ColourCount);
    const int height = headerWord(file, Height);
    const int line = headerWord(file, BytesPerLine);
    if (file.size() < offset + height * line)
        return {};
    return QImage(reinterpret_cast<const uchar *>(file.constData()) + offset,
                  headerWord(file, Width), height, line, QImage::Format_RGB32)
        .copy();
}

/** The smallest rectangle around all pixels of which the condition is true. */
QRect areaWhere(const QSize &size, const std::function<bool(int x, int y)> &condition)
{
    int left = size.width();
    int right = -1;
    int top = size.height();
    int bottom = -1;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            if (condition(x, y)) {
                left = qMin(left, x);
                right = qMax(right, x);
                top = qMin(top, y);
                bottom = qMax(bottom, y);
            }
    return right < 0 ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

} // namespace

XSession::XSession(const QSize &size)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // The session lasts as long as "cat" does: until its standard input is closed.
    process.start(sessionProgram, {QStringLiteral("--size"),
                                   QStringLiteral("%1x%2").arg(size.width()).arg(size.height()),
                                   QStringLiteral("--frame-buffer"), frameBuffer.path(),
                                   QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                                   QStringLiteral("echo \"$DISPLAY\"; exec cat")});
    while (!process.canReadLine() && process.waitForReadyRead(startTime))
        continue;
    name = process.readLine().trimmed();
    if (!isUp())
        return;
    movePointer(QPoint(0, 0));
    windowList.start(QStringLiteral("xprop"),
                     {QStringLiteral("-display"), display(), QStringLiteral("-root"),
                      QStringLiteral("-spy"), QStringLiteral("_NET_CLIENT_LIST")});
    windowList.waitForReadyRead(commandTime);
}

XSession::~XSession()
{
    windowList.terminate();
    windowList.waitForFinished();
    process.closeWriteChannel();
    process.waitForFinished();
}

bool XSession::isUp() const
{
    return !name.isEmpty() && process.state() == QProcess::Running;
}

QString XSession::display() const
{
    return QString::fromLatin1(name);
}

QStringList XSession::sandboxOptions() const
{
    return {QStringLiteral("--ro-bind"), QStringLiteral("/tmp/.X11-unix"),
            QStringLiteral("--env"),     QStringLiteral("DISPLAY=") + display(),
            QStringLiteral("--env"),     QStringLiteral("QT_QPA_PLATFORM=xcb")};
}

QImage XSession::picture() const
{
    QFile file(frameBuffer.filePath(QStringLiteral("Xvfb_screen0")));
    return file.open(QIODevice::ReadOnly) ? pictureFromXwd(file.readAll()) : QImage();
}

QImage XSession::picture(const QRect &area) const
{
    return picture().copy(area);
}

QString XSession::activeWindow() const
{
    return QString::fromUtf8(run({"getactivewindow", "getwindowname"}));
}

QRect XSession::geometry(const QString &title) const
{
    const QByteArray window =
        run({"search", "--onlyvisible", "--name", '^' + title + '$'}).split('\n').first();
    if (window.isEmpty())
        return {};
    int values[4] = {};
    const QList<QByteArray> lines = run({"getwindowgeometry", "--shell", window}).split('\n');
    const QList<QByteArray> names = {"X", "Y", "WIDTH", "HEIGHT"};
    for (const QByteArray &line : lines) {
        const int index = names.indexOf(line.left(line.indexOf('=')));
        if (index >= 0)
            values[index] = line.mid(line.indexOf('=') + 1).toInt();
    }
    return {values[0], values[1], values[2], values[3]};
}

QStringList XSession::windowsSoFar()
{
    while (windowList.waitForReadyRead(listTime))
        continue;
    windows += windowList.readAllStandardOutput();
    QStringList times;
    const QList<QByteArray> lines = windows.split('\n');
    for (const QByteArray &line : lines)
        if (line.contains('#'))
            times.append(QString::fromLatin1(line.mid(line.indexOf('#') + 1).trimmed()));
    return times;
}

void XSession::press(const QStringList &keys) const
{
    run(QStringList{"key"} + keys);
}

void XSession::type(const QString &text) const
{
    const QStringList lines = text.split('\n');
    for (int index = 0; index < lines.size(); ++index) {
        if (index > 0)
            press({"Return"});
        if (!lines.at(index).isEmpty())
            run({"type", "--delay", "1", "--", lines.at(index)});
    }
}

void XSession::movePointer(QPoint to) const
{
    run({"mousemove", QString::number(to.x()), QString::number(to.y())});
}

void XSession::click() const
{
    run({"click", "1"});
}

QByteArray XSession::run(const QStringList &xdotoolWords) const
{
    QProcess xdotool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), display());
    xdotool.setProcessEnvironment(environment);
    xdotool.start(QStringLiteral("xdotool"), xdotoolWords);
    xdotool.waitForFinished(commandTime);
    return xdotool.readAllStandardOutput().trimmed();
}

void XSession::Process::setupChildProcess()
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
}

int inkIn(const QImage &picture)
{
    int ink = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ink += picture.pixel(x, y) != picture.pixel(0, 0);
    return ink;
}

QRect differenceOf(const QImage &one, const QImage &other)
{
    return areaWhere(one.size(), [&](int x, int y) {
        const QRgb here = one.pixel(x, y);
        const QRgb there = other.pixel(x, y);
        return qAbs(qRed(here) - qRed(there)) > 1 || qAbs(qGreen(here) - qGreen(there)) > 1 ||
               qAbs(qBlue(here) - qBlue(there)) > 1;
    });
}

QRect areaOf(const QImage &picture, const QColor &colour)
{
    return areaWhere(picture.size(),
                     [&](int x, int y) { return picture.pixelColor(x, y) == colour; });
}

} // namespace TestSupport
