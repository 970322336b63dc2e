// Keys and buttons of the crash report screen, and what a screen reader is told.

#include "screen_parts.h"
#include "screen_reader.h"

#include "crash_reporter/crash_report_widget.h"
#include "tessel_core/shared_client_info.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace TestSupport;

namespace {

/** How often each of the screen's signals came, in their order. */
class SignalCounts
{
public:
    explicit SignalCounts(const CrashReportWidget &screen)
        : send(&screen, &CrashReportWidget::sendRequested)
        , save(&screen, &CrashReportWidget::saveRequested)
        , restart(&screen, &CrashReportWidget::restartRequested)
        , shutdown(&screen, &CrashReportWidget::shutdownRequested)
    {}

    QList<int> counts() const
    {
        return {send.count(), save.count(), restart.count(), shutdown.count()};
    }

private:
    QSignalSpy send;
    QSignalSpy save;
    QSignalSpy restart;
    QSignalSpy shutdown;
};

const QList<int> nothing{0, 0, 0, 0};

void activate(QWidget &screen)
{
    screen.show();
    QApplication::setActiveWindow(&screen);
    QVERIFY(QTest::qWaitForWindowActive(&screen));
}

/** The focus after each press of Tab or Backtab, until it is back where it was. */
QList<QWidget *> walk(Qt::Key key, int limit)
{
    QList<QWidget *> visited;
    QWidget *start = QApplication::focusWidget();
    do {
        QTest::keyClick(QApplication::focusWidget(), key);
        visited << QApplication::focusWidget();
    } while (visited.last() != start && visited.size() < limit);
    return visited;
}

QString nameOf(QWidget *widget)
{
    const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(widget);
    return known ? known->text(QAccessible::Name) : QStringLiteral("unknown");
}

} // namespace

class CrashReportInputTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void eachButtonSendsItsSignal_data();
    void eachButtonSendsItsSignal();
    void theHiddenButtonSendsItsSignalToo();
    void escapeLeavesTheScreenUp_data();
    void escapeLeavesTheScreenUp();
    void onlyTheProgramClosesTheScreen();
    void noButtonIsTheDefault();
    void returnPressesTheFocusedButtonOnly_data();
    void returnPressesTheFocusedButtonOnly();
    void aHeldReturnKeyPressesOnce();
    void returnInTheCommentsStartsALine();
    void tabVisitsEverythingOnceAndReturns_data();
    void tabVisitsEverythingOnceAndReturns();
    void theCommentsHaveTheFocusAtFirst();
    void everythingFocusableHasANameAndRole();
    void valuesAreReadWithTheirCaptions_data();
    void valuesAreReadWithTheirCaptions();
    void eachSecondIsAnnounced();
    void aCancelledCountdownIsNotRead();
};

void CrashReportInputTest::initTestCase()
{
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
}

void CrashReportInputTest::eachButtonSendsItsSignal_data()
{
    QTest::addColumn<QPushButton * ScreenParts::*>("button");
    QTest::addColumn<QList<int>>("counts");
    QTest::newRow("save") << ButtonPart(&ScreenParts::save) << QList<int>{0, 1, 0, 0};
    QTest::newRow("restart") << ButtonPart(&ScreenParts::restart) << QList<int>{0, 0, 1, 0};
    QTest::newRow("shutdown") << ButtonPart(&ScreenParts::shutdown) << QList<int>{0, 0, 0, 1};
}

void CrashReportInputTest::eachButtonSendsItsSignal()
{
    QFETCH(ButtonPart, button);
    CrashReportWidget screen;
    activate(screen);
    const SignalCounts sent(screen);
    QTest::mouseClick(ScreenParts(screen).*button, Qt::LeftButton);
    QTEST(sent.counts(), "counts");
    QVERIFY2(screen.isVisible(), "the screen decides nothing itself");
}

void CrashReportInputTest::theHiddenButtonSendsItsSignalToo()
{
    CrashReportWidget screen;
    const SignalCounts sent(screen);
    ScreenParts(screen).email->click();
    QCOMPARE(sent.counts(), QList<int>({1, 0, 0, 0}));
}

void CrashReportInputTest::escapeLeavesTheScreenUp_data()
{
    QTest::addColumn<QString>("focus");
    for (const char *focus : {"comments", "button", "nothing"})
        QTest::newRow(focus) << QString::fromLatin1(focus);
}

void CrashReportInputTest::escapeLeavesTheScreenUp()
{
    QFETCH(QString, focus);
    CrashReportWidget screen;
    activate(screen);
    const ScreenParts parts(screen);
    const QSignalSpy finished(&screen, &QDialog::finished);
    const SignalCounts sent(screen);
    QWidget *receiver = &screen;
    if (focus == QLatin1String("comments"))
        receiver = parts.comments;
    else if (focus == QLatin1String("button"))
        receiver = parts.save;
    receiver->setFocus();
    QTest::keyClick(receiver, Qt::Key_Escape);
    QTest::qWait(150); // as long as a button takes to be pressed by a key
    QVERIFY(screen.isVisible());
    QCOMPARE(finished.count(), 0);
    QCOMPARE(sent.counts(), nothing);
}

void CrashReportInputTest::onlyTheProgramClosesTheScreen()
{
    CrashReportWidget screen;
    activate(screen);
    QVERIFY(!screen.isControlAvailable(Vireling::WindowControl::Close));
    QVERIFY(!screen.triggerControl(Vireling::WindowControl::Close));
    QCloseEvent fromTheWindowManager;
    QSpontaneKeyEvent::setSpontaneous(&fromTheWindowManager);
    qApp->notify(&screen, &fromTheWindowManager); // sendEvent() would take it for our own
    QVERIFY(!fromTheWindowManager.isAccepted());
    QVERIFY(screen.isVisible());
    QVERIFY(screen.close());
    QVERIFY(!screen.isVisible());
}

void CrashReportInputTest::noButtonIsTheDefault()
{
    CrashReportWidget screen;
    activate(screen);
    const ScreenParts parts(screen);
    for (QPushButton *button : {parts.email, parts.save, parts.restart, parts.shutdown}) {
        button->setFocus();
        QVERIFY(!button->isDefault());
        QVERIFY(!button->autoDefault());
    }
    const SignalCounts sent(screen);
    parts.comments->setFocus();
    QTest::keyClick(&screen, Qt::Key_Return);
    QTest::qWait(150);
    QCOMPARE(sent.counts(), nothing);
    QVERIFY(screen.isVisible());
}

void CrashReportInputTest::returnPressesTheFocusedButtonOnly_data()
{
    QTest::addColumn<QPushButton * ScreenParts::*>("button");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QList<int>>("counts");
    QTest::newRow("save") << ButtonPart(&ScreenParts::save) << Qt::Key_Return
                          << QList<int>{0, 1, 0, 0};
    QTest::newRow("restart") << ButtonPart(&ScreenParts::restart) << Qt::Key_Return
                             << QList<int>{0, 0, 1, 0};
    QTest::newRow("shutdown, keypad")
        << ButtonPart(&ScreenParts::shutdown) << Qt::Key_Enter << QList<int>{0, 0, 0, 1};
    QTest::newRow("restart, space")
        << ButtonPart(&ScreenParts::restart) << Qt::Key_Space << QList<int>{0, 0, 1, 0};
}

void CrashReportInputTest::returnPressesTheFocusedButtonOnly()
{
    QFETCH(ButtonPart, button);
    QFETCH(Qt::Key, key);
    QFETCH(QList<int>, counts);
    CrashReportWidget screen;
    activate(screen);
    const SignalCounts sent(screen);
    QPushButton *focused = ScreenParts(screen).*button;
    focused->setFocus();
    QTest::keyClick(focused, key);
    QTRY_COMPARE(sent.counts(), counts);
}

void CrashReportInputTest::aHeldReturnKeyPressesOnce()
{
    CrashReportWidget screen;
    activate(screen);
    const SignalCounts sent(screen);
    QPushButton *save = ScreenParts(screen).save;
    save->setFocus();
    for (int repeat = 0; repeat < 5; ++repeat) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), repeat > 0);
        QCoreApplication::sendEvent(save, &press);
    }
    QTRY_COMPARE(sent.counts(), QList<int>({0, 1, 0, 0}));
    QTest::qWait(150);
    QCOMPARE(sent.counts(), QList<int>({0, 1, 0, 0}));
}

void CrashReportInputTest::returnInTheCommentsStartsALine()
{
    CrashReportWidget screen;
    activate(screen);
    const SignalCounts sent(screen);
    QPlainTextEdit *comments = ScreenParts(screen).comments;
    QTest::keyClicks(comments, QStringLiteral("one"));
    QTest::keyClick(comments, Qt::Key_Return);
    QTest::keyClicks(comments, QStringLiteral("two"));
    QCOMPARE(screen.comments(), QStringLiteral("one\ntwo"));
    QCOMPARE(sent.counts(), nothing);
}

void CrashReportInputTest::tabVisitsEverythingOnceAndReturns_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("forwards") << Qt::Key_Tab;
    QTest::newRow("backwards") << Qt::Key_Backtab;
}

void CrashReportInputTest::tabVisitsEverythingOnceAndReturns()
{
    QFETCH(Qt::Key, key);
    CrashReportWidget screen;
    screen.setCountdown(30);
    activate(screen);
    const ScreenParts parts(screen);
    parts.comments->setFocus();
    QList<QWidget *> expected{parts.save, parts.restart, parts.shutdown};
    if (key == Qt::Key_Backtab)
        std::reverse(expected.begin(), expected.end());
    expected << parts.comments;
    QCOMPARE(walk(key, 20), expected);
    QCOMPARE(screen.comments(), QString());
}

void CrashReportInputTest::theCommentsHaveTheFocusAtFirst()
{
    CrashReportWidget screen;
    activate(screen);
    QCOMPARE(QApplication::focusWidget(), ScreenParts(screen).comments);
}

void CrashReportInputTest::everythingFocusableHasANameAndRole()
{
    CrashReportWidget screen;
    screen.setCountdown(30);
    activate(screen);
    int focusable = 0;
    for (QWidget *widget : screen.findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus)
            continue;
        ++focusable;
        const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(known);
        QVERIFY2(!known->text(QAccessible::Name).isEmpty(), widget->metaObject()->className());
        QVERIFY(known->role() != QAccessible::NoRole && known->role() != QAccessible::Client);
    }
    QCOMPARE(focusable, 4);
    const ScreenParts parts(screen);
    QCOMPARE(nameOf(parts.comments), QStringLiteral("Comments:"));
    QCOMPARE(nameOf(parts.save), QStringLiteral("Save"));
}

void CrashReportInputTest::valuesAreReadWithTheirCaptions_data()
{
    QTest::addColumn<bool>("captionsFirst");
    QTest::newRow("values before captions, as at start-up") << false;
    QTest::newRow("values after captions") << true;
}

void CrashReportInputTest::valuesAreReadWithTheirCaptions()
{
    QFETCH(bool, captionsFirst);
    CrashReportWidget screen;
    if (captionsFirst)
        screen.ensurePolished();
    Tessel::SharedClientInfo info{};
    qstrcpy(info.serialNumber, "R4-000117");
    info.deviceType = 3;
    info.version = {2, 5, 1, 0};
    screen.setDateTime(QDateTime(QDate(2026, 11, 21), QTime(12, 34, 56)));
    screen.setClientInfo(&info);
    screen.ensurePolished();
    const ScreenParts parts(screen);
    QStringList names;
    for (QLabel *value : parts.values)
        names << nameOf(value);
    QCOMPARE(names,
             QStringList({QStringLiteral("Date & Time: 12:34:56 on Saturday 21 November 2026"),
                          QStringLiteral("Serial Number: R4-000117"),
                          QStringLiteral("Type: R4-220"), QStringLiteral("Version: 2.5.1")}));
}

void CrashReportInputTest::eachSecondIsAnnounced()
{
    CrashReportWidget screen;
    activate(screen);
    const ScreenParts parts(screen);
    const ScreenReader reader;
    screen.setCountdown(30);
    screen.setCountdown(29);
    QCOMPARE(reader.namesOf(*parts.countdown),
             QStringList({QStringLiteral("Restarting automatically in 30 seconds."),
                          QStringLiteral("Restarting automatically in 29 seconds.")}));
}

void CrashReportInputTest::aCancelledCountdownIsNotRead()
{
    CrashReportWidget screen;
    activate(screen);
    const ScreenParts parts(screen);
    screen.setCountdown(30);
    const ScreenReader reader;
    screen.setCountdown(0);
    QVERIFY(reader.heardHiding(*parts.countdown));
    // No restart in 0 seconds.
    QCOMPARE(reader.namesOf(*parts.countdown), QStringList{QString()});
}

QTEST_MAIN(CrashReportInputTest)
#include "tst_crash_report_input.moc"
