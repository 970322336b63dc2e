#include "vireling/widgets/elided_label.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>
#include <QtTest>

#include <cmath>
#include <cstdlib>

using namespace Vireling;

namespace {

const QString longText = QStringLiteral("A text that is far too long for the label it stands in");

/** Paints the label off-screen; also what decides whether its text had to be cut. */
QImage picture(QWidget &widget)
{
    return widget.grab().toImage();
}

/** Columns from the first to the last that differ from the label's ground; empty if none. */
QRect inkedArea(const QImage &image)
{
    const QRgb ground = image.pixel(0, 0);
    QRect area;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != ground)
                area |= QRect(x, y, 1, 1);
    return area;
}

bool sendToolTip(QWidget &widget)
{
    const QPoint centre = widget.rect().center();
    QHelpEvent event(QEvent::ToolTip, centre, widget.mapToGlobal(centre));
    return QCoreApplication::sendEvent(&widget, &event) && event.isAccepted();
}

} // namespace

class TestElidedLabel : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void theHintIsTheTextAndItsMargins_data();
    void theHintIsTheTextAndItsMargins();
    void itMayShrinkToNoWidth();
    void aChangeOfFontGivesANewHint();
    void aChangeOfMarginsGivesANewHint();
    void aChangeOfTextGivesANewHint();
    void theLayoutIsToldOfANewText();
    void aTextThatFitsIsWhole();
    void atItsHintATextIsWhole();
    void aTextThatDoesNotFitIsCut();
    void cutOrNotIsDecidedAnew();
    void aCutTextIsShownWholeInATooltip();
    void aTextThatFitsHasNoTooltipOfItsOwn();
    void anOrdinaryTooltipIsShownWhereTheTextFits();
    void markupIsShownAsItIs();
    void theTextBeginsAtTheLeadingEdge();
    void theTextStaysWithinTheContents();
    void aTallLabelHoldsItsTextInTheMiddle();
    void aDisabledLabelIsDrawnInItsGroup();
    void itIsAStaticTextNamedByWhatItSays();
    void aNameOfItsOwnWins();
};

void TestElidedLabel::cleanup()
{
    QToolTip::hideText();
}

void TestElidedLabel::theHintIsTheTextAndItsMargins_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("short") << "iiWW";
    QTest::newRow("long") << longText;
}

void TestElidedLabel::theHintIsTheTextAndItsMargins()
{
    QFETCH(QString, text);
    ElidedLabel label(text);
    label.setContentsMargins(3, 5, 7, 11);
    const QFontMetricsF metrics(label.font());
    QCOMPARE(label.sizeHint(), QSize(int(std::ceil(metrics.horizontalAdvance(text))) + 10,
                                     int(std::ceil(metrics.height())) + 16));
}

void TestElidedLabel::itMayShrinkToNoWidth()
{
    ElidedLabel label(longText);
    label.setContentsMargins(3, 5, 7, 11);
    QCOMPARE(label.minimumSizeHint(),
             QSize(0, int(std::ceil(QFontMetricsF(label.font()).height()))));
}

void TestElidedLabel::aChangeOfFontGivesANewHint()
{
    ElidedLabel label(longText);
    const QSize before = label.sizeHint();
    QFont larger = label.font();
    larger.setPointSizeF(larger.pointSizeF() * 2);
    label.setFont(larger);
    QVERIFY(label.sizeHint().width() > before.width());
    QVERIFY(label.sizeHint().height() > before.height());
}

void TestElidedLabel::aChangeOfMarginsGivesANewHint()
{
    ElidedLabel label(longText);
    const QSize before = label.sizeHint();
    label.setContentsMargins(1, 2, 3, 4);
    QCOMPARE(label.sizeHint(), before + QSize(4, 6));
}

void TestElidedLabel::aChangeOfTextGivesANewHint()
{
    ElidedLabel label("short");
    const QSize before = label.sizeHint();
    label.setText(longText);
    QCOMPARE(label.text(), longText);
    QVERIFY(label.sizeHint().width() > before.width());
}

void TestElidedLabel::theLayoutIsToldOfANewText()
{
    QWidget window;
    QHBoxLayout layout(&window);
    ElidedLabel label("short");
    layout.addWidget(&label);
    const int before = window.sizeHint().width();
    label.setText(longText);
    QCoreApplication::sendPostedEvents();
    QVERIFY(window.sizeHint().width() > before);
}

void TestElidedLabel::aTextThatFitsIsWhole()
{
    ElidedLabel label("short");
    label.resize(300, 30);
    picture(label);
    QVERIFY(!label.isElided());
}

void TestElidedLabel::atItsHintATextIsWhole()
{
    ElidedLabel label(longText);
    label.setContentsMargins(3, 5, 7, 11);
    label.resize(label.sizeHint());
    picture(label);
    QVERIFY(!label.isElided());
}

void TestElidedLabel::aTextThatDoesNotFitIsCut()
{
    ElidedLabel label(longText);
    label.resize(60, 30);
    picture(label);
    QVERIFY(label.isElided());
}

void TestElidedLabel::cutOrNotIsDecidedAnew()
{
    ElidedLabel label(longText);
    label.resize(60, 30);
    picture(label);
    label.setText("short");
    picture(label);
    QVERIFY(!label.isElided());
    label.resize(5, 30);
    picture(label);
    QVERIFY(label.isElided());
}

void TestElidedLabel::aCutTextIsShownWholeInATooltip()
{
    ElidedLabel label(longText);
    label.setToolTip("something else");
    label.resize(60, 30);
    label.show();
    picture(label);
    QVERIFY(sendToolTip(label));
    QVERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), longText);
}

void TestElidedLabel::aTextThatFitsHasNoTooltipOfItsOwn()
{
    ElidedLabel label("short");
    label.resize(300, 30);
    label.show();
    picture(label);
    QVERIFY(!sendToolTip(label));
    QVERIFY(!QToolTip::isVisible());
}

void TestElidedLabel::anOrdinaryTooltipIsShownWhereTheTextFits()
{
    ElidedLabel label("short");
    label.setToolTip("something else");
    label.resize(300, 30);
    label.show();
    picture(label);
    QVERIFY(sendToolTip(label));
    QCOMPARE(QToolTip::text(), QString("something else"));
}

/** File names may look like markup; the label draws them as they are. */
void TestElidedLabel::markupIsShownAsItIs()
{
    const QString name = "<b>a file</b> & \"another\" of a long name.txt";
    ElidedLabel label(name);
    label.resize(60, 30);
    label.show();
    picture(label);
    sendToolTip(label);
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QVERIFY(Qt::mightBeRichText(QToolTip::text()));
    QCOMPARE(shown.toPlainText(), name);
}

void TestElidedLabel::theTextBeginsAtTheLeadingEdge()
{
    ElidedLabel label("short");
    label.resize(300, 30);
    QVERIFY(inkedArea(picture(label)).right() < 150);
    label.setLayoutDirection(Qt::RightToLeft);
    QVERIFY(inkedArea(picture(label)).left() > 150);
}

void TestElidedLabel::theTextStaysWithinTheContents()
{
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        ElidedLabel label(longText);
        label.setLayoutDirection(direction);
        label.setContentsMargins(20, 0, 30, 0);
        label.resize(200, 30);
        const QRect inked = inkedArea(picture(label));
        QVERIFY(!inked.isEmpty());
        QVERIFY(inked.left() >= 19); // a letter may lean out by a pixel
        QVERIFY(inked.right() <= 200 - 30);
    }
}

void TestElidedLabel::aTallLabelHoldsItsTextInTheMiddle()
{
    ElidedLabel label("xxxx");
    label.resize(100, 90);
    const QRect inked = inkedArea(picture(label));
    QVERIFY(std::abs(inked.center().y() - 45) <= 5);
}

void TestElidedLabel::aDisabledLabelIsDrawnInItsGroup()
{
    ElidedLabel label("\u2588\u2588\u2588"); // full blocks: plain areas of the text's colour
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::red);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, Qt::blue);
    label.setPalette(palette);
    label.resize(label.sizeHint());
    const QPoint inside = label.rect().center();
    QCOMPARE(picture(label).pixelColor(inside), QColor(Qt::red));
    label.setEnabled(false);
    QCOMPARE(picture(label).pixelColor(inside), QColor(Qt::blue));
}

void TestElidedLabel::itIsAStaticTextNamedByWhatItSays()
{
    ElidedLabel label(longText);
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(interface);
    QCOMPARE(interface->role(), QAccessible::StaticText);
    QCOMPARE(interface->text(QAccessible::Name), longText);
    label.setText("another");
    QCOMPARE(interface->text(QAccessible::Name), QString("another"));
}

void TestElidedLabel::aNameOfItsOwnWins()
{
    ElidedLabel label(longText);
    label.setAccessibleName("Title");
    label.setAccessibleDescription("Of the window");
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(interface);
    QCOMPARE(interface->text(QAccessible::Name), QString("Title"));
    QCOMPARE(interface->text(QAccessible::Description), QString("Of the window"));
}

QTEST_MAIN(TestElidedLabel)
#include "tst_elided_label.moc"
