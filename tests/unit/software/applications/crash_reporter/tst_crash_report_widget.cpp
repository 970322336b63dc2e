// What the crash report screen shows, and where.

#include "screen_parts.h"

#include "crash_reporter/crash_report_widget.h"
#include "tessel_core/shared_client_info.h"
#include "vireling/gallery/pseudo_translator.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"
#include "vireling/widgets/icon_label.h"

#include <QApplication>
#include <QDateTime>
#include <QGridLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QTest>

#include <cstring>

using namespace TestSupport;
using Tessel::SharedClientInfo;

namespace {

QString shownText(const QWidget *widget)
{
    return widget ? widget->property("text").toString() : QStringLiteral("no such widget");
}

QList<QString> shownTexts(const ScreenParts &parts)
{
    QList<QString> texts;
    for (const QWidget *widget : parts.translated())
        texts << shownText(widget);
    return texts;
}

/** Delivers what a screen gets before it is shown or measured. */
void polish(QWidget &widget)
{
    widget.ensurePolished();
}

/** A block as the main application leaves it. */
SharedClientInfo clientInfo(const QByteArray &serial, quint8 type, Tessel::Version version)
{
    SharedClientInfo info{};
    std::memcpy(info.serialNumber, serial.constData(), size_t(serial.size()));
    info.deviceType = type;
    info.version = version;
    return info;
}

} // namespace

class CrashReportWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyPartStandsInItsPlace();
    void valuesFillTheirCellsAndCaptionsKeepToTheRight();
    void theIconIsCriticalAndStandsAtTheTop();
    void fontsAreTheToolkits_data();
    void fontsAreTheToolkits();
    void onlyTheInstructionsWrap();
    void theSignalsComeInTheirOrder();
    void theConstructorSetsNoText();
    void textsAreInPlaceBeforeTheFirstSizeHint();
    void theAmpersandOfTheDateIsShown();
    void everyTextFollowsTheLanguageWithSignalsBlocked();
    void aChangeOfLocaleAppliesTheTextsToo();
    void theTimeIsWrittenOut_data();
    void theTimeIsWrittenOut();
    void theClientInfoIsShown_data();
    void theClientInfoIsShown();
    void aMissingBlockShowsNothing();
    void aSerialNumberIsNoMarkup();
    void aDamagedSerialNumberLeavesTheButtonsOnTheDisplay_data();
    void aDamagedSerialNumberLeavesTheButtonsOnTheDisplay();
    void aSerialNumberIsNoListOfVariants_data();
    void aSerialNumberIsNoListOfVariants();
    void theCountdownIsHiddenAtZeroOnly();
    void commentsKeepTheirLineBreaks();
    void theEmailButtonIsHidden();
};

void CrashReportWidgetTest::initTestCase()
{
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
}

void CrashReportWidgetTest::everyPartStandsInItsPlace()
{
    const CrashReportWidget screen;
    const ScreenParts parts(screen);
    QCOMPARE(screen.layout()->count(), 2);
    QVERIFY(parts.grid && parts.row);
    for (const QWidget *widget : parts.translated())
        QVERIFY(widget);
    for (const QWidget *value : parts.values)
        QVERIFY(value);
    QVERIFY(parts.comments && parts.number);

    QCOMPARE(parts.grid->rowCount(), 8);
    QCOMPARE(parts.grid->columnCount(), 3);
    for (QLabel *sentence : {parts.title, parts.message, parts.instructions}) {
        int row = 0, column = 0, rows = 0, columns = 0;
        parts.grid->getItemPosition(parts.grid->indexOf(sentence), &row, &column, &rows, &columns);
        QCOMPARE(column, 1);
        QCOMPARE(rows, 1);
        QCOMPARE(columns, 2);
    }
    QCOMPARE(parts.row->count(), 6);
    QVERIFY(parts.row->itemAt(1)->spacerItem());
    QCOMPARE(parts.row->stretch(1), 1);
    QCOMPARE(parts.countdown->layout()->contentsMargins(), QMargins());
    QCOMPARE(parts.countdown->layout()->count(), 3);
}

void CrashReportWidgetTest::valuesFillTheirCellsAndCaptionsKeepToTheRight()
{
    const CrashReportWidget screen;
    const ScreenParts parts(screen);
    for (QLabel *caption : parts.captions)
        QCOMPARE(parts.grid->itemAt(parts.grid->indexOf(caption))->alignment(),
                 Qt::Alignment(Qt::AlignRight));
    for (QLabel *value : parts.values)
        QCOMPARE(parts.grid->itemAt(parts.grid->indexOf(value))->alignment(), Qt::Alignment());
}

void CrashReportWidgetTest::theIconIsCriticalAndStandsAtTheTop()
{
    CrashReportWidget screen;
    const ScreenParts parts(screen);
    int row = 0, column = 0, rows = 0, columns = 0;
    parts.grid->getItemPosition(0, &row, &column, &rows, &columns);
    QCOMPARE(QRect(column, row, columns, rows), QRect(0, 0, 1, 8));
    const QLayout *box = parts.grid->itemAt(0)->layout();
    QVERIFY(box);
    QCOMPARE(box->count(), 2);
    auto *icon = qobject_cast<Vireling::IconLabel *>(box->itemAt(0)->widget());
    QVERIFY(icon);
    QCOMPARE(icon->iconSize(), QSize(24, 24));
    const QSize size = icon->iconSize();
    QCOMPARE(icon->icon().pixmap(size).toImage(),
             screen.style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(size).toImage());

    screen.resize(700, 700);
    screen.show();
    QCOMPARE(icon->y(), parts.title->y());
}

void CrashReportWidgetTest::fontsAreTheToolkits_data()
{
    QTest::addColumn<QLabel * ScreenParts::*>("label");
    QTest::addColumn<int>("weight");
    QTest::newRow("title") << LabelPart(&ScreenParts::title) << 63;
    QTest::newRow("before the number") << LabelPart(&ScreenParts::prefix) << 50;
    QTest::newRow("number") << LabelPart(&ScreenParts::number) << 63;
    QTest::newRow("after the number") << LabelPart(&ScreenParts::suffix) << 50;
}

void CrashReportWidgetTest::fontsAreTheToolkits()
{
    QFETCH(LabelPart, label);
    CrashReportWidget screen;
    polish(screen);
    const QFont font = (ScreenParts(screen).*label)->font();
    QCOMPARE(font.family(), QStringLiteral("Titillium Web"));
    QTEST(font.weight(), "weight");
    QCOMPARE(font.pointSizeF(), 12.0);
}

void CrashReportWidgetTest::onlyTheInstructionsWrap()
{
    CrashReportWidget screen;
    polish(screen);
    const ScreenParts parts(screen);
    for (const QLabel *label : screen.findChildren<QLabel *>())
        QCOMPARE(label->wordWrap(), label == parts.instructions);
}

void CrashReportWidgetTest::theSignalsComeInTheirOrder()
{
    QByteArrayList signatures;
    const QMetaObject &meta = CrashReportWidget::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        if (meta.method(index).methodType() == QMetaMethod::Signal)
            signatures << meta.method(index).methodSignature();
    QCOMPARE(signatures, QByteArrayList({"sendRequested()", "saveRequested()", "restartRequested()",
                                         "shutdownRequested()"}));
}

void CrashReportWidgetTest::theConstructorSetsNoText()
{
    const CrashReportWidget screen;
    for (const QString &text : shownTexts(ScreenParts(screen)))
        QCOMPARE(text, QString());
}

void CrashReportWidgetTest::textsAreInPlaceBeforeTheFirstSizeHint()
{
    CrashReportWidget screen;
    const QSize hint = screen.sizeHint();
    QCOMPARE(shownTexts(ScreenParts(screen)), expectedTexts());
    screen.resize(hint);
    screen.show();
    QCOMPARE(screen.size(), hint);
    QCOMPARE(screen.sizeHint(), hint);
}

void CrashReportWidgetTest::theAmpersandOfTheDateIsShown()
{
    CrashReportWidget screen;
    screen.show();
    const QLabel *caption = ScreenParts(screen).captions.at(0);
    // A label with a buddy takes the ampersand for a mnemonic and draws it not.
    QVERIFY(!caption->buddy());
    QLabel doubled(QStringLiteral("Date & Time:"));
    QLabel without(QStringLiteral("Date  Time:"));
    QCOMPARE(caption->sizeHint(), doubled.sizeHint());
    QVERIFY(caption->sizeHint().width() > without.sizeHint().width());
}

void CrashReportWidgetTest::everyTextFollowsTheLanguageWithSignalsBlocked()
{
    CrashReportWidget screen;
    screen.show();
    int retranslations = 0;
    bool blocked = true;
    screen.addRetranslation([&] {
        ++retranslations;
        blocked = blocked && screen.signalsBlocked();
    });

    Vireling::PseudoTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCoreApplication::sendPostedEvents();
    QList<QString> expected;
    for (const QString &text : expectedTexts())
        expected << Vireling::pseudoTranslation(text);
    QCOMPARE(shownTexts(ScreenParts(screen)), expected);
    QVERIFY(retranslations > 0);
    QVERIFY(blocked);
    QVERIFY(!screen.signalsBlocked());

    QCoreApplication::removeTranslator(&translator);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(shownTexts(ScreenParts(screen)), expectedTexts());
}

void CrashReportWidgetTest::aChangeOfLocaleAppliesTheTextsToo()
{
    CrashReportWidget screen;
    polish(screen);
    const ScreenParts parts(screen);
    parts.title->clear();
    screen.setLocale(QLocale(QLocale::German));
    QCOMPARE(shownTexts(parts), expectedTexts());
}

void CrashReportWidgetTest::theTimeIsWrittenOut_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<QString>("text");
    QTest::newRow("two-figure day") << QDateTime(QDate(2026, 11, 21), QTime(12, 34, 56))
                                    << "12:34:56 on Saturday 21 November 2026";
    QTest::newRow("one-figure day and hour")
        << QDateTime(QDate(2026, 3, 2), QTime(1, 2, 3)) << "01:02:03 on Monday 2 March 2026";
    QTest::newRow("null") << QDateTime() << QString();
}

void CrashReportWidgetTest::theTimeIsWrittenOut()
{
    QFETCH(QDateTime, time);
    CrashReportWidget screen;
    screen.setDateTime(time);
    QTEST(ScreenParts(screen).values.at(0)->text(), "text");
}

void CrashReportWidgetTest::theClientInfoIsShown_data()
{
    QTest::addColumn<QByteArray>("serial");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("patch");
    QTest::addColumn<int>("build");
    QTest::addColumn<QString>("typeText");
    QTest::addColumn<QString>("versionText");
    const QByteArray serial("R4-000117");
    QTest::newRow("no block written yet") << QByteArray() << 0 << 0 << 0 << "Unknown"
                                          << "2.5";
    QTest::newRow("PC") << serial << 2 << 0 << 0 << "R4-PC"
                        << "2.5";
    QTest::newRow("220") << serial << 3 << 1 << 0 << "R4-220"
                         << "2.5.1";
    QTest::newRow("120, beta") << serial << 4 << 1 << 131 << "R4-120"
                               << "2.5.1 BETA3";
    QTest::newRow("010, candidate") << serial << 5 << 0 << 66 << "R4-010"
                                    << "2.5 RC2";
    QTest::newRow("210") << serial << 6 << 255 << 0 << "R4-210"
                         << "2.5.255";
    QTest::newRow("110") << serial << 7 << 0 << 0 << "R4-110"
                         << "2.5";
    QTest::newRow("beyond the table") << serial << 255 << 0 << 0 << "Unknown"
                                      << "2.5";
    QTest::newRow("63 characters, Latin-1") << QByteArray(63, '\xe9') << 3 << 0 << 0 << "R4-220"
                                            << "2.5";
}

void CrashReportWidgetTest::theClientInfoIsShown()
{
    QFETCH(QByteArray, serial);
    QFETCH(int, type);
    QFETCH(int, patch);
    QFETCH(int, build);
    CrashReportWidget screen;
    const auto info = clientInfo(serial, quint8(type), {2, 5, quint8(patch), quint8(build)});
    screen.setClientInfo(&info);
    const ScreenParts parts(screen);
    QCOMPARE(parts.values.at(1)->text(), QString::fromLatin1(serial));
    QTEST(parts.values.at(2)->text(), "typeText");
    QTEST(parts.values.at(3)->text(), "versionText");
}

void CrashReportWidgetTest::aMissingBlockShowsNothing()
{
    CrashReportWidget screen;
    const auto info = clientInfo("R4-000117", 3, {2, 5, 1, 0});
    screen.setClientInfo(&info);
    screen.setClientInfo(nullptr);
    const ScreenParts parts(screen);
    for (int fact = 1; fact <= 3; ++fact)
        QCOMPARE(parts.values.at(fact)->text(), QString());
}

void CrashReportWidgetTest::aSerialNumberIsNoMarkup()
{
    CrashReportWidget screen;
    const auto plain = clientInfo("<b>117</b>", 3, {});
    screen.setClientInfo(&plain);
    const QLabel *value = ScreenParts(screen).values.at(1);
    QCOMPARE(value->text(), QStringLiteral("<b>117</b>"));
    QLabel asText(value->text());
    asText.setTextFormat(Qt::PlainText);
    QCOMPARE(value->sizeHint(), asText.sizeHint());
}

void CrashReportWidgetTest::aDamagedSerialNumberLeavesTheButtonsOnTheDisplay_data()
{
    QTest::addColumn<QByteArray>("serial");
    QTest::newRow("line ends") << QByteArray(64, '\n');
    QTest::newRow("carriage returns") << QByteArray(64, '\r');
    QTest::newRow("form feeds") << QByteArray(64, '\f');
    QTest::newRow("next lines") << QByteArray(64, '\x85');
    QTest::newRow("short lines") << QByteArray("R4\n").repeated(21);
    QTest::newRow("tabs") << QByteArray(64, '\t');
    QTest::newRow("wide letters") << QByteArray(64, 'W');
}

void CrashReportWidgetTest::aDamagedSerialNumberLeavesTheButtonsOnTheDisplay()
{
    QFETCH(QByteArray, serial);
    CrashReportWidget screen;
    const auto info = clientInfo(serial, 3, {});
    screen.setClientInfo(&info);
    screen.setCountdown(100);
    screen.resize(screen.sizeHint());
    screen.show();
    QVERIFY(screen.width() <= 800 && screen.height() <= 480);
    QCOMPARE(ScreenParts(screen).values.at(1)->text(), Tessel::serialNumber(info));
}

void CrashReportWidgetTest::aSerialNumberIsNoListOfVariants_data()
{
    QTest::addColumn<QByteArray>("serial");
    QTest::newRow("the first one does not fit") << QByteArray("a\n\n\n\x9c");
    QTest::newRow("the first one fits") << QByteArray("R4-000117\x9cS");
}

void CrashReportWidgetTest::aSerialNumberIsNoListOfVariants()
{
    QFETCH(QByteArray, serial);
    CrashReportWidget screen;
    const auto info = clientInfo(serial, 3, {});
    screen.setClientInfo(&info);
    screen.show();
    QLabel *value = ScreenParts(screen).values.at(1);
    QCOMPARE(value->text(), QString::fromLatin1(serial).replace(u'\x9c', u'\xfffd'));
    QImage shown(value->size(), QImage::Format_ARGB32_Premultiplied);
    shown.fill(Qt::transparent);
    const QImage blank = shown;
    value->render(&shown, QPoint(), QRegion(), QWidget::DrawChildren);
    QVERIFY2(shown != blank, "nothing is drawn");
}

void CrashReportWidgetTest::theCountdownIsHiddenAtZeroOnly()
{
    CrashReportWidget screen;
    screen.show();
    const ScreenParts parts(screen);
    QVERIFY2(parts.countdown->isHidden(), "hidden until somebody counts");
    screen.setCountdown(5);
    QVERIFY(parts.countdown->isVisible());
    QCOMPARE(parts.number->text(), QStringLiteral("5"));
    screen.setCountdown(0);
    QVERIFY(parts.countdown->isHidden());
    QCOMPARE(parts.number->text(), QStringLiteral("0"));
    screen.setCountdown(-1);
    QVERIFY(parts.countdown->isVisible());
    QCOMPARE(parts.number->text(), QStringLiteral("-1"));
}

void CrashReportWidgetTest::commentsKeepTheirLineBreaks()
{
    const CrashReportWidget screen;
    QCOMPARE(screen.comments(), QString());
    const QString text = QStringLiteral(u"first \"line\"\n\nthird ]]> \U0001F600");
    ScreenParts(screen).comments->setPlainText(text);
    QCOMPARE(screen.comments(), text);
}

void CrashReportWidgetTest::theEmailButtonIsHidden()
{
    CrashReportWidget screen;
    screen.show();
    const ScreenParts parts(screen);
    QVERIFY(parts.email->isHidden());
    for (const QPushButton *button : {parts.save, parts.restart, parts.shutdown})
        QVERIFY(button->isVisible());
}

QTEST_MAIN(CrashReportWidgetTest)
#include "tst_crash_report_widget.moc"
