// What the crash report screen makes of the block of shared memory and of the time of the
// crash: it shows what stands there, takes none of it for markup, stays small enough for
// the smallest display with all its buttons, and paints at least where a serial number
// begins.
//
// An input is the block as its writer made it, as for fuzz_shared_block; behind its 336
// bytes the time, as a crash data file holds it: 8 bytes Julian day and 4 bytes
// milliseconds, both big-endian.

#include "crash_reporter/crash_report_widget.h"
#include "crash_reporter/device_type.h"
#include "fuzz/input_bytes.h"
#include "fuzz/require.h"
#include "tessel_core/shared_client_info.h"
#include "unit/software/applications/crash_reporter/screen_parts.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QDateTime>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QtEndian>

#include <algorithm>
#include <cstdlib>
#include <cstring>

using namespace Tessel;
using TestSupport::ScreenParts;

namespace {

constexpr QSize smallestDisplay(800, 480);

/** An application without a display and its one screen, for as long as the process lives. */
class Display
{
public:
    Display()
    {
        Vireling::initialiseResources();
        Vireling::installAppearance(Vireling::Theme::Dark);
        screen = new CrashReportWidget;
        screen->ensurePolished();
    }

    CrashReportWidget *screen = nullptr;

private:
    struct Offscreen
    {
        Offscreen() { qputenv("QT_QPA_PLATFORM", "offscreen"); }
    };
    Offscreen offscreen;
    int count = 1;
    char name[16] = "report_screen";
    char *arguments[2] = {name, nullptr};
    QApplication application{count, arguments};
};

enum Row
{
    Time,
    Serial,
    Type,
    DeviceVersion,
};

/** None where the input ends before it does. */
QDateTime timeFrom(InputBytes &bytes)
{
    constexpr int daySize = 8;
    const QByteArray field = bytes.take(daySize + 4);
    if (field.size() < daySize + 4)
        return {};
    const QDate date = QDate::fromJulianDay(qFromBigEndian<qint64>(field.constData()));
    const auto milliseconds = qFromBigEndian<qint32>(field.constData() + daySize);
    return {date, QTime::fromMSecsSinceStartOfDay(milliseconds)};
}

void checkTime(const QString &shown, const QDateTime &time)
{
    constexpr int digits = 4;
    require(shown.isEmpty() != time.isValid(), "a time is shown if there is one");
    const QString year = QString::number(std::abs(time.date().year()));
    require(shown.isEmpty() || shown.endsWith(year.rightJustified(digits, '0')),
            "the year comes last");
}

/** Without the character that Qt takes for the mark between variants of a text. */
QString shownSerialNumber(const SharedClientInfo &info)
{
    return serialNumber(info).replace(QChar(0x9C), QChar::ReplacementCharacter);
}

void checkValues(const ScreenParts &parts, const SharedClientInfo &info)
{
    require(parts.values.at(Serial)->text() == shownSerialNumber(info), "the serial number");
    require(parts.values.at(Type)->text() == deviceTypeName(info.deviceType), "the type");
    require(parts.values.at(DeviceVersion)->text() == toQString(info.version, false),
            "the version");
    for (const QLabel *value : parts.values)
        require(value->textFormat() == Qt::PlainText, "a value is no markup");
}

void checkSize(CrashReportWidget &screen)
{
    // As the event loop would: an invalid layout alone keeps the sizes of those within it.
    screen.layout()->invalidate();
    screen.layout()->activate();
    const QSize size = screen.sizeHint().expandedTo(screen.minimumSizeHint());
    require(size.width() <= smallestDisplay.width() && size.height() <= smallestDisplay.height(),
            "the screen fits the smallest display");
}

/** Of a text that begins with a letter or a sign: what follows may be line ends and blanks. */
void checkPainting(QLabel &label)
{
    const QString text = label.text();
    if (text.isEmpty() || text[0] <= ' ' || text[0] > '~')
        return;
    QImage picture(label.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    const QImage blank = picture;
    label.render(&picture, QPoint(), QRegion(), QWidget::DrawChildren);
    require(picture != blank, "the beginning of the text can be seen");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static Display &display = *new Display; // Qt's own statics may end before ours
    InputBytes bytes(data, size);
    const QByteArray block = bytes.take(sharedClientInfoSize);
    const QDateTime time = timeFrom(bytes);
    SharedClientInfo info = {};
    std::memcpy(&info, block.constData(), static_cast<std::size_t>(block.size()));

    display.screen->setDateTime(time);
    display.screen->setClientInfo(&info);
    display.screen->setCountdown(std::max(info.autoActionSeconds, 0));
    const ScreenParts parts(*display.screen);
    checkTime(parts.values.at(Time)->text(), time);
    checkValues(parts, info);
    require(parts.countdown->isHidden() == (info.autoActionSeconds <= 0),
            "a countdown is shown when there is one");
    require(parts.countdown->isHidden() ||
                parts.number->text() == QString::number(info.autoActionSeconds),
            "the countdown begins with the block's seconds");
    checkSize(*display.screen);
    display.screen->resize(smallestDisplay);
    checkPainting(*parts.values.at(Serial));
    return 0;
}
