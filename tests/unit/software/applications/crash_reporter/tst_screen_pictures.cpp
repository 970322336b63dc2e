/*
 * Both screens in every state, and the window of a long package, on every screen the
 * appliance is sold with: nothing cut off, nothing on top of each other. Run at ratio 1
 * and 2; see the CMake file.
 *
 * With R4_SCREEN_PICTURES naming a folder it leaves the pictures there, to be looked at.
 */
#include "screen_parts.h"

#include "crash_reporter/crash_report_widget.h"
#include "crash_reporter/device_type.h"
#include "crash_reporter/progress_window.h"
#include "crash_reporter/safe_shutdown_widget.h"
#include "support/layout_check.h"
#include "tessel_core/shared_client_info.h"
#include "vireling/gallery/pseudo_translator.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QLabel>
#include <QLayout>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>

#include <cstring>

using namespace TestSupport;

namespace {

/** In logical pixels; at ratio 2 the one of 1920 x 1080 has 3840 x 2160 of its own. */
constexpr QSize screenSizes[]{{800, 480}, {1024, 768}, {1280, 800}, {1920, 1080}};
constexpr quint8 deviceTypes[]{0, 2, 3, 4, 5, 6, 7};

enum class Texts
{
    Plain,
    Pseudo
};

/** What the main application and the operator may have left to be shown. */
enum class Contents
{
    Ordinary,
    Long,  ///< 63 characters, 10,000 lines
    Widest ///< 63 of the widest character, one endless word
};

struct Situation
{
    QSize screen;
    Texts texts = Texts::Plain;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    Contents contents = Contents::Ordinary;
    bool counting = false;
    quint8 deviceType = 3;
};

QString nameOf(const Situation &situation)
{
    const char *contents[]{"ordinary", "long", "widest"};
    return QStringLiteral("%1x%2-%3-%4-%5%6")
        .arg(situation.screen.width())
        .arg(situation.screen.height())
        .arg(QLatin1String(situation.texts == Texts::Plain ? "plain" : "pseudo"),
             QLatin1String(situation.direction == Qt::LeftToRight ? "ltr" : "rtl"),
             QLatin1String(contents[int(situation.contents)]),
             QLatin1String(situation.counting ? "-counting" : ""));
}

QByteArray serialNumber(Contents contents)
{
    switch (contents) {
    case Contents::Ordinary:
        return "R4-2026-000117";
    case Contents::Long:
        return QByteArray("0123456789-ABCDEF").repeated(4).left(63);
    case Contents::Widest:
        break;
    }
    return QByteArray(63, 'W');
}

QString comments(Contents contents)
{
    if (contents == Contents::Ordinary)
        return QStringLiteral("Loading a show from a key.\nThe screen froze, then went black.");
    if (contents == Contents::Widest)
        return QString(2000, QLatin1Char('W'));
    QStringList lines;
    for (int line = 1; line <= 10000; ++line)
        lines << QStringLiteral("Line %1 of what the operator pasted.").arg(line);
    return lines.join(QLatin1Char('\n'));
}

void fill(CrashReportWidget &screen, const Situation &situation)
{
    Tessel::SharedClientInfo info{};
    const QByteArray serial = serialNumber(situation.contents);
    std::memcpy(info.serialNumber, serial.constData(), size_t(serial.size()));
    info.deviceType = situation.deviceType;
    info.version = {25, 11, 12, 191};
    // The longest names of a day and of a month.
    screen.setDateTime(QDateTime(QDate(2026, 9, 30), QTime(22, 44, 58)));
    screen.setClientInfo(&info);
    ScreenParts(screen).comments->setPlainText(comments(situation.contents));
    screen.setCountdown(situation.counting ? 3600 : 0);
    screen.setWindowTitle(QStringLiteral("R4 Error Reporter"));
}

/** A layout within a layout hears one turn of the event loop later. */
void settle()
{
    for (int turn = 0; turn < 5; ++turn)
        QCoreApplication::processEvents();
}

/** For a pair of eyes: the backdrop and, before it, the window where there is one. */
void keepPicture(SafeShutdownWidget &backdrop, QWidget *screen, const QString &name)
{
    const QString folder = qEnvironmentVariable("R4_SCREEN_PICTURES");
    if (folder.isEmpty())
        return;
    QPixmap picture = backdrop.grab();
    if (screen) {
        QPainter painter(&picture);
        const QSize room = backdrop.size() - screen->size();
        painter.drawPixmap(QPoint(room.width() / 2, room.height() / 2), screen->grab());
    }
    const int ratio = qRound(picture.devicePixelRatio());
    QVERIFY(picture.save(QDir(folder).filePath(QStringLiteral("%1@%2.png").arg(name).arg(ratio))));
}

void addSituationColumns()
{
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<int>("texts");
    QTest::addColumn<Qt::LayoutDirection>("direction");
}

template <typename Function>
void forEachSituation(Function function)
{
    for (const QSize &screen : screenSizes)
        for (const Texts texts : {Texts::Plain, Texts::Pseudo})
            for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft})
                function(Situation{screen, texts, direction});
}

QString joined(const QStringList &problems)
{
    return problems.join(QLatin1Char('\n'));
}

} // namespace

class ScreenPicturesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void theRatioIsTheOneAskedFor();
    void theCrashScreenFits_data();
    void theCrashScreenFits();
    void theCrashScreenFitsMaximised_data() { theCrashScreenFits_data(); }
    void theCrashScreenFitsMaximised();
    void aChangeOfLanguageLeavesNothingCutOff();
    void theBackdropFits_data();
    void theBackdropFits();
    void theProgressWindowFits_data();
    void theProgressWindowFits();
    void aLongCommentScrolls();
    void anEndlessSerialNumberBreaks();

private:
    Situation fetched();
    /** The same with what only the crash screen shows. */
    Situation fetchedReport();

    Vireling::PseudoTranslator translator;
};

void ScreenPicturesTest::initTestCase()
{
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
}

void ScreenPicturesTest::init()
{
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

void ScreenPicturesTest::cleanup()
{
    QCoreApplication::removeTranslator(&translator);
}

Situation ScreenPicturesTest::fetched()
{
    Situation situation;
    situation.screen = *static_cast<QSize *>(QTest::qData("screen", qMetaTypeId<QSize>()));
    situation.texts = Texts(*static_cast<int *>(QTest::qData("texts", qMetaTypeId<int>())));
    situation.direction = *static_cast<Qt::LayoutDirection *>(
        QTest::qData("direction", qMetaTypeId<Qt::LayoutDirection>()));
    if (situation.texts == Texts::Pseudo)
        QCoreApplication::installTranslator(&translator);
    QApplication::setLayoutDirection(situation.direction);
    return situation;
}

Situation ScreenPicturesTest::fetchedReport()
{
    Situation situation = fetched();
    QFETCH(int, contents);
    QFETCH(bool, counting);
    situation.contents = Contents(contents);
    situation.counting = counting;
    return situation;
}

void ScreenPicturesTest::theRatioIsTheOneAskedFor()
{
    QWidget widget;
    QCOMPARE(widget.devicePixelRatioF(),
             qMax(1.0, qEnvironmentVariable("QT_SCALE_FACTOR").toDouble()));
}

void ScreenPicturesTest::theCrashScreenFits_data()
{
    addSituationColumns();
    QTest::addColumn<int>("contents");
    QTest::addColumn<bool>("counting");
    forEachSituation([](Situation situation) {
        for (const Contents contents : {Contents::Ordinary, Contents::Long, Contents::Widest}) {
            for (const bool counting : {false, true}) {
                situation.contents = contents;
                situation.counting = counting;
                QTest::newRow(qPrintable(nameOf(situation)))
                    << situation.screen << int(situation.texts) << situation.direction
                    << int(contents) << counting;
            }
        }
    });
}

void ScreenPicturesTest::theCrashScreenFits()
{
    const Situation situation = fetchedReport();

    CrashReportWidget screen;
    fill(screen, situation);
    screen.resize(screen.sizeHint());
    screen.show();
    settle();

    SafeShutdownWidget backdrop;
    backdrop.resize(situation.screen);
    keepPicture(backdrop, &screen, QStringLiteral("crash-") + nameOf(situation));
    QVERIFY2(QRect(QPoint(), situation.screen).contains(QRect(QPoint(), screen.size())),
             qPrintable(QStringLiteral("%1 x %2").arg(screen.width()).arg(screen.height())));
    QCOMPARE(joined(layoutProblems(screen)), QString());
}

void ScreenPicturesTest::theCrashScreenFitsMaximised()
{
    const Situation situation = fetchedReport();

    CrashReportWidget screen;
    fill(screen, situation);
    screen.resize(situation.screen);
    screen.show();
    settle();
    QCOMPARE(screen.size(), situation.screen);
    QCOMPARE(joined(layoutProblems(screen)), QString());
}

void ScreenPicturesTest::aChangeOfLanguageLeavesNothingCutOff()
{
    Situation situation;
    situation.counting = true;
    CrashReportWidget screen;
    fill(screen, situation);
    screen.resize(screen.sizeHint());
    screen.show();
    settle();
    QVERIFY(QCoreApplication::installTranslator(&translator));
    settle();
    QCOMPARE(joined(layoutProblems(screen)), QString());
    QVERIFY(screen.width() <= 800 && screen.height() <= 480);
    const ScreenParts parts(screen);
    QVERIFY(parts.prefix->wordWrap());
    QCOMPARE(parts.number->x(),
             parts.prefix->x() + parts.prefix->width() + parts.countdown->layout()->spacing());

    QCoreApplication::removeTranslator(&translator);
    settle();
    QVERIFY(!parts.prefix->wordWrap());
    QCOMPARE(joined(layoutProblems(screen)), QString());
}

void ScreenPicturesTest::theBackdropFits_data()
{
    addSituationColumns();
    QTest::addColumn<int>("deviceType");
    QTest::addColumn<bool>("message");
    forEachSituation([](const Situation &situation) {
        for (const quint8 type : deviceTypes)
            for (const bool message : {false, true})
                QTest::addRow("%s-type%d%s", qPrintable(nameOf(situation)), type,
                              message ? "-message" : "")
                    << situation.screen << int(situation.texts) << situation.direction << int(type)
                    << message;
    });
}

void ScreenPicturesTest::theBackdropFits()
{
    const Situation situation = fetched();
    QFETCH(int, deviceType);
    QFETCH(bool, message);
    SafeShutdownWidget backdrop;
    backdrop.setDeviceName(deviceTypeName(quint8(deviceType)));
    backdrop.setMessageVisible(message);
    backdrop.resize(situation.screen);
    backdrop.show();
    settle();
    QCOMPARE(backdrop.size(), situation.screen);
    QCOMPARE(joined(layoutProblems(backdrop)), QString());
    keepPicture(backdrop, nullptr,
                QStringLiteral("backdrop-") + QString::fromLatin1(QTest::currentDataTag()));
}

void ScreenPicturesTest::theProgressWindowFits_data()
{
    addSituationColumns();
    forEachSituation([](const Situation &situation) {
        QTest::newRow(qPrintable(nameOf(situation)))
            << situation.screen << int(situation.texts) << situation.direction;
    });
}

void ScreenPicturesTest::theProgressWindowFits()
{
    const Situation situation = fetched();
    ProgressWindow window(nullptr);
    window.setProgress(888800000, 2147483648);
    window.show();
    settle();
    SafeShutdownWidget backdrop;
    backdrop.resize(situation.screen);
    keepPicture(backdrop, &window, QStringLiteral("progress-") + nameOf(situation));
    QVERIFY(QRect(QPoint(), situation.screen).contains(QRect(QPoint(), window.size())));
    QCOMPARE(joined(layoutProblems(window)), QString());
}

void ScreenPicturesTest::aLongCommentScrolls()
{
    Situation situation;
    situation.contents = Contents::Long;
    CrashReportWidget screen;
    fill(screen, situation);
    screen.resize(screen.sizeHint());
    screen.show();
    settle();
    QPlainTextEdit *edit = ScreenParts(screen).comments;
    QVERIFY(edit->verticalScrollBar()->isVisible());
    QVERIFY(!edit->horizontalScrollBar()->isVisible());
    QCOMPARE(screen.comments(), comments(Contents::Long));
}

void ScreenPicturesTest::anEndlessSerialNumberBreaks()
{
    Situation situation;
    situation.contents = Contents::Widest;
    CrashReportWidget screen;
    fill(screen, situation);
    screen.resize(screen.sizeHint());
    screen.show();
    settle();
    const QLabel *serial = ScreenParts(screen).values.at(1);
    QCOMPARE(serial->text(), QString(63, QLatin1Char('W')));
    QVERIFY(serial->height() > serial->fontMetrics().height() * 3 / 2);
    // Both lines are painted.
    const QImage picture = const_cast<QLabel *>(serial)->grab().toImage();
    const auto inkIn = [&](int top, int bottom) {
        int ink = 0;
        for (int y = top; y < bottom; ++y)
            for (int x = 0; x < picture.width(); ++x)
                ink += picture.pixelColor(x, y).lightness() > 128;
        return ink;
    };
    QVERIFY(inkIn(0, picture.height() / 2) > 0);
    QVERIFY(inkIn(picture.height() / 2, picture.height()) > 0);
}

int main(int argc, char **argv)
{
    Vireling::initialiseHighDpi();
    QApplication app(argc, argv);
    ScreenPicturesTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_screen_pictures.moc"
