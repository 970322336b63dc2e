#include "vireling/widgets/detailed_tool_tip.h"

#include <QLabel>
#include <QTextDocument>
#include <QToolTip>
#include <QtTest>

#include <cmath>

using namespace Vireling;

class TestDetailedToolTip : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void theHtmlIsTheTemplateFilledIn();
    void theMarginIsEightPixelsInEm();
    void plainTextsAreEscaped();
    void markupIsKept();
    void whatLooksLikeAPlaceholderIsNone();
    void itReadsAsTitleAndText();
    void aLabelShowingOneIsRecognised();
    void everythingElseIsNone();
    void fontsBecomeCssShorthands_data();
    void fontsBecomeCssShorthands();
};

void TestDetailedToolTip::init()
{
    QFont font("DejaVu Sans");
    font.setPixelSize(13);
    font.setWeight(63);
    QToolTip::setFont(font);
}

void TestDetailedToolTip::theHtmlIsTheTemplateFilledIn()
{
    const QString margin = QString::number(8.0 / QFontMetrics(QToolTip::font()).height());
    QCOMPARE(
        detailedToolTip("Title", "Text"),
        QString("<head><meta name=\"description\" content=\"vr-detailed-tooltip\"><style>table { "
                "border-style: none; border-collapse: collapse; margin: ") +
            margin +
            "em; }th { text-align: left; font: 200 9.00pt Titillium Web; }td { font: 504 13px "
            "DejaVu Sans; white-space: pre-line; }</style></head><body><table><tr><th>Title</th>"
            "</tr><tr><td>Text</td></tr></table></body>");
}

void TestDetailedToolTip::theMarginIsEightPixelsInEm()
{
    QFont font("DejaVu Sans");
    for (const int pixels : {8, 13, 40}) {
        font.setPixelSize(pixels);
        QToolTip::setFont(font);
        const QRegularExpression margin("margin: ([0-9.]+)em");
        const auto match = margin.match(detailedToolTip("a", "b"));
        QVERIFY(match.hasMatch());
        const qreal inPixels = match.captured(1).toDouble() * QFontMetrics(font).height();
        QVERIFY2(std::abs(inPixels - 8) < 0.001, qPrintable(match.captured(1)));
    }
}

void TestDetailedToolTip::plainTextsAreEscaped()
{
    const QString html = detailedToolTip("a < b", "c & d \"e\"");
    QVERIFY2(html.contains("<th>a &lt; b</th>"), qPrintable(html));
    QVERIFY2(html.contains("<td>c &amp; d &quot;e&quot;</td>"), qPrintable(html));
}

void TestDetailedToolTip::markupIsKept()
{
    const QString html = detailedToolTip("<b>bold</b>", "<i>slanted</i> & more");
    QVERIFY2(html.contains("<th><b>bold</b></th>"), qPrintable(html));
    QVERIFY2(html.contains("<td><i>slanted</i> & more</td>"), qPrintable(html));
}

/** Texts come from devices and files: "%6" in a title is no place for the text. */
void TestDetailedToolTip::whatLooksLikeAPlaceholderIsNone()
{
    const QString html = detailedToolTip("100%6", "%1 %5");
    QVERIFY2(html.contains("<th>100%6</th>"), qPrintable(html));
    QVERIFY2(html.contains("<td>%1 %5</td>"), qPrintable(html));
}

void TestDetailedToolTip::itReadsAsTitleAndText()
{
    QTextDocument document;
    document.setHtml(detailedToolTip("Title", "Text"));
    const QStringList lines =
        document.toPlainText().split(QRegularExpression("\\s+"), Qt::SkipEmptyParts);
    QCOMPARE(lines, (QStringList{"Title", "Text"}));
}

void TestDetailedToolTip::aLabelShowingOneIsRecognised()
{
    QLabel label(detailedToolTip("Title", "Text"));
    QVERIFY(isDetailedToolTip(&label));
    label.setText("say vr-detailed-tooltip");
    QVERIFY(isDetailedToolTip(&label));
}

void TestDetailedToolTip::everythingElseIsNone()
{
    QVERIFY(!isDetailedToolTip(nullptr));
    QLabel label("vr-Detailed-Tooltip"); // the marker is case-sensitive
    QVERIFY(!isDetailedToolTip(&label));
    label.setText("<b>rich</b>");
    QVERIFY(!isDetailedToolTip(&label));
    QWidget widget;
    widget.setToolTip(detailedToolTip("Title", "Text"));
    QVERIFY(!isDetailedToolTip(&widget));
}

void TestDetailedToolTip::fontsBecomeCssShorthands_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<qreal>("points");
    QTest::addColumn<QString>("shorthand");
    QTest::newRow("regular, pixels") << 50 << 13 << 0.0 << "400 13px Some Family";
    QTest::newRow("semi-bold, points") << 63 << 0 << 9.75 << "504 9.75pt Some Family";
    QTest::newRow("whole points") << 25 << 0 << 9.0 << "200 9.00pt Some Family";
    QTest::newRow("long fraction") << 12 << 0 << 6.756 << "96 6.76pt Some Family";
}

void TestDetailedToolTip::fontsBecomeCssShorthands()
{
    QFETCH(int, weight);
    QFETCH(int, pixels);
    QFETCH(qreal, points);
    QFont font("Some Family");
    font.setWeight(weight);
    if (pixels > 0)
        font.setPixelSize(pixels);
    else
        font.setPointSizeF(points);
    QTEST(cssFontShorthand(font), "shorthand");
}

QTEST_MAIN(TestDetailedToolTip)
#include "tst_detailed_tool_tip.moc"
