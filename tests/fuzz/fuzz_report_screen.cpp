// What the crash report screen makes of the block of shared memory: it shows what stands
// there, takes none of it for markup, and stays small enough for the smallest display
// with all its buttons.
//
// An input is the block as its writer made it, as for fuzz_shared_block.

#include "crash_reporter/crash_report_widget.h"
#include "crash_reporter/device_type.h"
#include "fuzz/input_bytes.h"
#include "fuzz/require.h"
#include "tessel_core/shared_client_info.h"
#include "unit/software/applications/crash_reporter/screen_parts.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>

#include <algorithm>
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

void checkValues(const ScreenParts &parts, const SharedClientInfo &info)
{
    enum Row
    {
        Serial = 1,
        Type,
        DeviceVersion,
    };
    require(parts.values.at(Serial)->text() == serialNumber(info), "the serial number");
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static Display &display = *new Display; // Qt's own statics may end before ours
    const QByteArray block = InputBytes(data, size).take(sharedClientInfoSize);
    SharedClientInfo info = {};
    std::memcpy(&info, block.constData(), static_cast<std::size_t>(block.size()));

    display.screen->setClientInfo(&info);
    display.screen->setCountdown(std::max(info.autoActionSeconds, 0));
    const ScreenParts parts(*display.screen);
    checkValues(parts, info);
    require(parts.countdown->isHidden() == (info.autoActionSeconds <= 0),
            "a countdown is shown when there is one");
    require(parts.countdown->isHidden() ||
                parts.number->text() == QString::number(info.autoActionSeconds),
            "the countdown begins with the block's seconds");
    checkSize(*display.screen);
    return 0;
}
