#include "vireling/widgets/card_button.h"

#include <QAccessible>
#include <QtTest>

#include <cstdlib>

using namespace Vireling;

namespace {

const QString oneLine = QStringLiteral("Saves the report.");
const QString manyLines =
    QStringLiteral("Saves the report on a removable drive, from which the service can read it, and "
                   "then restarts the system, which takes about two minutes and a half.");

QIcon anyIcon()
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

/** `rect` as it lies in a card of the given width whose text runs the other way. */
QRect mirrored(const QRect &rect, int cardWidth)
{
    return {cardWidth - rect.left() - rect.width(), rect.top(), rect.width(), rect.height()};
}

} // namespace

class TestCardButton : public QObject
{
    Q_OBJECT

private slots:
    void titleAndDescriptionAreWhatItWasGiven();
    void itIsAButtonNamedByItsTitle();
    void itTakesTheFocusByKeyAndPointer();
    void theHintHoldsEveryPart_data();
    void theHintHoldsEveryPart();
    void aLongDescriptionFitsIntoTwoLinesAtTheHint();
    void aLongTitleFitsAtTheHint();
    void cardsWithOneOrTwoLinesAreEquallyHigh();
    void aNewDescriptionIsANewHint();
    void theIconStandsLeadingAndTextBesideIt();
    void withoutAnIconTheTextBeginsAtTheEdge();
    void theTextColumnIsInTheMiddle();
    void partsAreMirrored();
    void aNarrowCardKeepsItsPartsInside();
    void linesAreBrokenAtWords();
    void linesFollowTextAndWidth();
    void atMostTwoLinesAreShown();
    void whitespaceOfADescriptionIsFolded();
    void anEmptyDescriptionHasNoLines();
};

void TestCardButton::titleAndDescriptionAreWhatItWasGiven()
{
    CardButton card("Save", oneLine);
    QCOMPARE(card.text(), QString("Save"));
    QCOMPARE(card.description(), oneLine);
    card.setDescription("other");
    QCOMPARE(card.property("description").toString(), QString("other"));
}

void TestCardButton::itIsAButtonNamedByItsTitle()
{
    CardButton card("Save", oneLine);
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&card);
    QVERIFY(interface);
    QCOMPARE(interface->role(), QAccessible::PushButton);
    QCOMPARE(interface->text(QAccessible::Name), QString("Save"));
    QCOMPARE(interface->text(QAccessible::Description), oneLine);
}

void TestCardButton::itTakesTheFocusByKeyAndPointer()
{
    QCOMPARE(CardButton().focusPolicy(), Qt::StrongFocus);
}

void TestCardButton::theHintHoldsEveryPart_data()
{
    QTest::addColumn<bool>("withIcon");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("description");
    for (const bool withIcon : {false, true})
        for (const QString &title : {QString(), QString("&Save")})
            for (const QString &description : {QString(), oneLine, manyLines})
                QTest::addRow("icon %d, title '%s', description of %d letters", withIcon,
                              qPrintable(title), int(description.size()))
                    << withIcon << title << description;
}

void TestCardButton::theHintHoldsEveryPart()
{
    QFETCH(bool, withIcon);
    QFETCH(QString, title);
    QFETCH(QString, description);
    CardButton card(title, description);
    if (withIcon)
        card.setIcon(anyIcon());
    const QRect rect(QPoint(), card.sizeHint());
    const CardLayout layout = cardLayout(card, rect);
    const QRect inner = rect.adjusted(16, 12, -16, -12);

    QCOMPARE(layout.icon.isEmpty(), !withIcon);
    QCOMPARE(layout.title.isEmpty(), title.isEmpty());
    QCOMPARE(layout.description.isEmpty(), description.isEmpty());
    for (const QRect &part : {layout.icon, layout.title, layout.description})
        QVERIFY(part.isEmpty() || inner.contains(part));
    QVERIFY(!layout.icon.intersects(layout.title));
    QVERIFY(!layout.icon.intersects(layout.description));
    QVERIFY(!layout.title.intersects(layout.description));
}

void TestCardButton::aLongDescriptionFitsIntoTwoLinesAtTheHint()
{
    const CardButton card("Save", manyLines);
    const CardLayout layout = cardLayout(card, QRect(QPoint(), card.sizeHint()));
    const QStringList lines = cardDescriptionLines(manyLines, layout.description.width());
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.join(' '), manyLines);
}

void TestCardButton::aLongTitleFitsAtTheHint()
{
    const QString title =
        "A title that is much longer than any that the screens have, and then some";
    const CardButton card(title, oneLine);
    const CardLayout layout = cardLayout(card, QRect(QPoint(), card.sizeHint()));
    QVERIFY(layout.title.width() >= QFontMetrics(cardTitleFont()).horizontalAdvance(title));
}

void TestCardButton::cardsWithOneOrTwoLinesAreEquallyHigh()
{
    QCOMPARE(CardButton("Save", oneLine).sizeHint().height(),
             CardButton("Save", manyLines).sizeHint().height());
}

void TestCardButton::aNewDescriptionIsANewHint()
{
    CardButton card("Save", oneLine);
    const QSize before = card.sizeHint();
    card.setDescription(manyLines);
    QVERIFY(card.sizeHint().width() > before.width());
    card.setDescription(oneLine);
    QCOMPARE(card.sizeHint(), before);
}

void TestCardButton::theIconStandsLeadingAndTextBesideIt()
{
    CardButton card("Save", oneLine);
    card.setIcon(anyIcon());
    const CardLayout layout = cardLayout(card, QRect(0, 0, 400, 100));
    QCOMPARE(layout.icon, QRect(16, 34, 32, 32));
    QCOMPARE(layout.title.left(), 60);
    QCOMPARE(layout.description.left(), 60);
    QCOMPARE(layout.title.right() + 1, 384);
    QVERIFY(layout.title.bottom() < layout.description.top());
}

void TestCardButton::withoutAnIconTheTextBeginsAtTheEdge()
{
    const CardButton card("Save", oneLine);
    QCOMPARE(cardLayout(card, QRect(0, 0, 400, 100)).title.left(), 16);
}

void TestCardButton::theTextColumnIsInTheMiddle()
{
    for (const QString &description : {QString(), oneLine, manyLines}) {
        const CardButton card("Save", description);
        const CardLayout layout = cardLayout(card, QRect(0, 0, 300, 200));
        const QRect text = layout.title | layout.description;
        const int above = text.top();
        const int below = 200 - text.bottom() - 1;
        QVERIFY(std::abs(above - below) <= 1);
    }
}

void TestCardButton::partsAreMirrored()
{
    CardButton card("Save", manyLines);
    card.setIcon(anyIcon());
    const CardLayout leftToRight = cardLayout(card, QRect(0, 0, 400, 100));
    card.setLayoutDirection(Qt::RightToLeft);
    const CardLayout rightToLeft = cardLayout(card, QRect(0, 0, 400, 100));
    QCOMPARE(rightToLeft.icon, mirrored(leftToRight.icon, 400));
    QCOMPARE(rightToLeft.title, mirrored(leftToRight.title, 400));
    QCOMPARE(rightToLeft.description, mirrored(leftToRight.description, 400));
}

void TestCardButton::aNarrowCardKeepsItsPartsInside()
{
    CardButton card("Save", manyLines);
    card.setIcon(anyIcon());
    for (int width = 0; width < 200; width += 7) {
        const CardLayout layout = cardLayout(card, QRect(0, 0, width, 80));
        QVERIFY(layout.title.width() >= 0);
        QVERIFY(layout.title.isEmpty() || layout.title.right() < width);
        QVERIFY(layout.description.isEmpty() || layout.description.right() < width);
    }
}

void TestCardButton::linesAreBrokenAtWords()
{
    const QFont font = cardDescriptionFont();
    const int width = QFontMetrics(font).horizontalAdvance("first second") + 2;
    QCOMPARE(cardDescriptionLines("first second third", width),
             (QStringList{"first second", "third"}));
}

void TestCardButton::linesFollowTextAndWidth()
{
    const int narrow = QFontMetrics(cardDescriptionFont()).horizontalAdvance("second") + 2;
    for (int time = 0; time < 2; ++time) { // worked out, and remembered
        QCOMPARE(cardDescriptionLines("first second", 500), QStringList{"first second"});
        QCOMPARE(cardDescriptionLines("first second", narrow), (QStringList{"first", "second"}));
        QCOMPARE(cardDescriptionLines("third", 500), QStringList{"third"});
    }
}

void TestCardButton::atMostTwoLinesAreShown()
{
    const QFont font = cardDescriptionFont();
    const QStringList lines = cardDescriptionLines(manyLines, 120);
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines.last().endsWith(QChar(0x2026)));
    for (const QString &line : lines)
        QVERIFY(QFontMetrics(font).horizontalAdvance(line) <= 120);
}

void TestCardButton::whitespaceOfADescriptionIsFolded()
{
    QCOMPARE(cardDescriptionLines(" two\n\n words ", 500), QStringList{"two words"});
}

void TestCardButton::anEmptyDescriptionHasNoLines()
{
    QCOMPARE(cardDescriptionLines(QString(), 500), QStringList());
    QCOMPARE(cardDescriptionLines(oneLine, 0), QStringList());
}

QTEST_MAIN(TestCardButton)
#include "tst_card_button.moc"
