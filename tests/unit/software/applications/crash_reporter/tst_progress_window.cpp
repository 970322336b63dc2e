// The window of a package that takes long: what it tells, and that nobody closes it.

#include "crash_reporter/progress_window.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QTest>

namespace {

constexpr quint64 megabyte = 1000000;
constexpr quint64 gigabyte = 1000 * megabyte;

} // namespace

class ProgressWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theWindowTellsDoneOfAll_data();
    void theWindowTellsDoneOfAll();
    void theOperatorCannotCloseTheWindow_data();
    void theOperatorCannotCloseTheWindow();
    void theWindowKeepsItsSize();
    void theWindowIsNotEnlarged();
    void theAmountStandsWhereReadingBegins_data();
    void theAmountStandsWhereReadingBegins();
};

void ProgressWindowTest::initTestCase()
{
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
}

void ProgressWindowTest::theWindowTellsDoneOfAll_data()
{
    QTest::addColumn<quint64>("done");
    QTest::addColumn<quint64>("inAll");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("permille");
    QTest::newRow("nothing of nothing")
        << quint64(0) << quint64(0) << QStringLiteral("0 bytes of 0 bytes") << 0;
    QTest::newRow("more than the nothing there was")
        << quint64(5) << quint64(0) << QStringLiteral("0 bytes of 0 bytes") << 0;
    QTest::newRow("at the start") << quint64(0) << 2 * megabyte
                                  << QStringLiteral("0 bytes of 2.0 MB") << 0;
    QTest::newRow("half") << 750 * megabyte << 1500 * megabyte
                          << QStringLiteral("750.0 MB of 1.5 GB") << 500;
    QTest::newRow("all") << 2 * megabyte << 2 * megabyte << QStringLiteral("2.0 MB of 2.0 MB")
                         << 1000;
    QTest::newRow("a log that grew")
        << 3 * megabyte << 2 * megabyte << QStringLiteral("2.0 MB of 2.0 MB") << 1000;
    QTest::newRow("more than an int holds")
        << 30 * gigabyte << 40 * gigabyte << QStringLiteral("30.0 GB of 40.0 GB") << 750;
}

void ProgressWindowTest::theWindowTellsDoneOfAll()
{
    QFETCH(quint64, done);
    QFETCH(quint64, inAll);
    QWidget screen;
    ProgressWindow window(&screen);
    window.setProgress(done, inAll);
    QTEST(window.findChild<QLabel *>()->text(), "text");
    const auto *bar = window.findChild<QProgressBar *>();
    QFETCH(int, permille);
    QCOMPARE(bar->value() * 1000, permille * bar->maximum());
    QCOMPARE(bar->minimum(), 0);
}

void ProgressWindowTest::theOperatorCannotCloseTheWindow_data()
{
    QTest::addColumn<QString>("attempt");
    for (const char *attempt : {"Escape", "Return", "Enter", "Space", "frame", "window manager"})
        QTest::newRow(attempt) << QString::fromLatin1(attempt);
}

void ProgressWindowTest::theOperatorCannotCloseTheWindow()
{
    QFETCH(QString, attempt);
    QWidget screen;
    ProgressWindow window(&screen);
    window.show();
    QVERIFY(!window.isControlAvailable(Vireling::WindowControl::Close));
    if (attempt == QLatin1String("frame")) {
        QVERIFY(!window.triggerControl(Vireling::WindowControl::Close));
    } else if (attempt == QLatin1String("window manager")) {
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        qApp->notify(&window, &close); // sendEvent() would take it for our own
        QVERIFY(!close.isAccepted());
    } else {
        QTest::keySequence(&window, QKeySequence(attempt));
    }
    QVERIFY(window.isVisible());
    QVERIFY(window.close());
    QVERIFY2(!window.isVisible(), "the program can");
}

void ProgressWindowTest::theWindowKeepsItsSize()
{
    QWidget screen;
    ProgressWindow window(&screen);
    window.setProgress(0, 2 * gigabyte);
    window.show();
    const QSize size = window.size();
    const QSize smallest = window.minimumSizeHint();
    const QRect bar = window.findChild<QProgressBar *>()->geometry();
    for (quint64 done = 1; done < 2 * gigabyte; done *= 7) {
        window.setProgress(done, 2 * gigabyte);
        QCoreApplication::processEvents();
        QCOMPARE(window.size(), size);
        QCOMPARE(window.minimumSizeHint(), smallest);
        QCOMPARE(window.findChild<QProgressBar *>()->geometry(), bar);
    }
}

void ProgressWindowTest::theWindowIsNotEnlarged()
{
    QWidget screen;
    ProgressWindow window(&screen);
    window.show();
    for (const auto control : {Vireling::WindowControl::Maximise, Vireling::WindowControl::Minimise,
                               Vireling::WindowControl::Restore})
        QVERIFY(!window.isControlAvailable(control));
}

void ProgressWindowTest::theAmountStandsWhereReadingBegins_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void ProgressWindowTest::theAmountStandsWhereReadingBegins()
{
    QFETCH(Qt::LayoutDirection, direction);
    QWidget screen;
    ProgressWindow window(&screen);
    window.setLayoutDirection(direction); // a window does not take it from its parent
    window.setProgress(megabyte, gigabyte);
    window.show();
    const QRect amount = window.findChild<QLabel *>()->geometry();
    const QRect bar = window.findChild<QProgressBar *>()->geometry();
    QVERIFY(amount.width() < bar.width());
    if (direction == Qt::RightToLeft)
        QCOMPARE(amount.right(), bar.right());
    else
        QCOMPARE(amount.left(), bar.left());
}

QTEST_MAIN(ProgressWindowTest)
#include "tst_progress_window.moc"
