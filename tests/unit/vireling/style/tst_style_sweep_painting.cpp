#include "style_sweep.h"

using namespace StyleSweep;
using namespace TestSupport;

namespace {

/** Strokes and rings of neighbours may reach a little way out, never into another control. */
constexpr int reach = 2;

QByteArray inWords(const QRect &rect)
{
    return QByteArray::number(rect.x()) + ", " + QByteArray::number(rect.y()) + ", " +
           QByteArray::number(rect.width()) + " x " + QByteArray::number(rect.height());
}

template <typename Element, typename Draw>
void sweep(Element element, const Style &style, Draw draw)
{
    QWidget widget;
    for (int kind = 0; kind < optionKindCount; ++kind) {
        const bool isOwn = OptionKind(kind) == optionKind(element);
        for (const Circumstance &circumstance : circumstances()) {
            const auto option = makeOption(OptionKind(kind));
            QVERIFY(option);
            option->palette = style.standardPalette();
            apply(circumstance, *option);
            WatchedPainter painter;
            draw(*option, &painter, isOwn ? &widget : nullptr);
            const QByteArray changed = painter.changed();
            QVERIFY2(changed.isEmpty(), changed);
            if (!isOwn || circumstance.rect != ordinaryRect())
                continue;
            const QRect drawn = painter.drawnRect();
            const QRect allowed = circumstance.rect.adjusted(-reach, -reach, reach, reach);
            QVERIFY2(drawn.isEmpty() || allowed.contains(drawn), "draws " + inWords(drawn));
        }
        const auto bare = makeOption(OptionKind(kind));
        makeBare(*bare);
        WatchedPainter painter;
        draw(*bare, &painter, nullptr);
        QCOMPARE(painter.changed(), QByteArray());
    }
}

template <typename Element>
void addRows()
{
    QTest::addColumn<int>("element");
    QTest::addColumn<int>("theme");
    const QMetaEnum elements = QMetaEnum::fromType<Element>();
    QVERIFY(elements.keyCount() > 5);
    for (int i = 0; i < elements.keyCount(); ++i)
        for (const Theme theme : {Theme::Dark, Theme::Light})
            if (!isCustomBase(elements.key(i)))
                QTest::addRow("%s, %s", elements.key(i), theme == Theme::Dark ? "dark" : "light")
                    << elements.value(i) << int(theme);
}

} // namespace

/**
 * Every enumerator that draws, with options of every class, in every state: nothing
 * crashes, the painter comes back as it was, and an element stays in its place.
 */
class TestStyleSweepPainting : public QObject
{
    Q_OBJECT

private slots:
    void primitiveElements_data() { addRows<QStyle::PrimitiveElement>(); }
    void primitiveElements();
    void controlElements_data() { addRows<QStyle::ControlElement>(); }
    void controlElements();
    void complexControls_data() { addRows<QStyle::ComplexControl>(); }
    void complexControls();
};

void TestStyleSweepPainting::primitiveElements()
{
    QFETCH(int, element);
    QFETCH(int, theme);
    const Style style(themePalette(Theme(theme)));
    const auto which = QStyle::PrimitiveElement(element);
    sweep(which, style, [&](const QStyleOption &option, QPainter *painter, const QWidget *widget) {
        style.drawPrimitive(which, &option, painter, widget);
    });
}

void TestStyleSweepPainting::controlElements()
{
    QFETCH(int, element);
    QFETCH(int, theme);
    const Style style(themePalette(Theme(theme)));
    const auto which = QStyle::ControlElement(element);
    sweep(which, style, [&](const QStyleOption &option, QPainter *painter, const QWidget *widget) {
        style.drawControl(which, &option, painter, widget);
    });
}

void TestStyleSweepPainting::complexControls()
{
    QFETCH(int, element);
    QFETCH(int, theme);
    const Style style(themePalette(Theme(theme)));
    const auto which = QStyle::ComplexControl(element);
    sweep(which, style, [&](const QStyleOption &option, QPainter *painter, const QWidget *widget) {
        // the class of the option promises it to be one for complex controls
        if (const auto *complex = qstyleoption_cast<const QStyleOptionComplex *>(&option))
            style.drawComplexControl(which, complex, painter, widget);
    });
}

QTEST_MAIN(TestStyleSweepPainting)
#include "tst_style_sweep_painting.moc"
