#include "style_sweep.h"

#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QPlainTextEdit>
#include <QStyleHintReturn>

using namespace StyleSweep;
using namespace TestSupport;

namespace {

template <typename Enum>
void addRows()
{
    QTest::addColumn<int>("value");
    const QMetaEnum values = QMetaEnum::fromType<Enum>();
    QVERIFY(values.keyCount() > 5);
    for (int i = 0; i < values.keyCount(); ++i)
        if (!isCustomBase(values.key(i)))
            QTest::newRow(values.key(i)) << values.value(i);
}

/** Calls `check` with options of every class in all circumstances; `isOwn` for the right class. */
template <typename Element, typename Check>
void forEveryOption(Element element, Check check)
{
    for (int kind = 0; kind < optionKindCount; ++kind) {
        const bool isOwn = OptionKind(kind) == optionKind(element);
        for (const Circumstance &circumstance : circumstances()) {
            const auto option = makeOption(OptionKind(kind));
            apply(circumstance, *option);
            check(*option, isOwn);
        }
        const auto bare = makeOption(OptionKind(kind));
        makeBare(*bare);
        check(*bare, false);
    }
}

/** Whether a part may lie outside its control's rectangle: those of widgets around it. */
bool liesWithin(const QRect &part, const QRect &whole)
{
    return part.isEmpty() || whole.isEmpty() || whole.contains(part);
}

QList<QStyle::SubControl> singleParts()
{
    QList<QStyle::SubControl> parts;
    for (quint32 bit = 1; bit != 0; bit <<= 1)
        parts.append(QStyle::SubControl(bit));
    parts.append(QStyle::SC_None);
    parts.append(QStyle::SC_All);
    return parts;
}

} // namespace

/**
 * Every enumerator that answers: places, sizes, metrics, hints and icons, with
 * options of every class, without widget and with an unrelated one.
 */
class TestStyleSweepGeometry : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void subElements_data() { addRows<QStyle::SubElement>(); }
    void subElements();
    void subControls_data() { addRows<QStyle::ComplexControl>(); }
    void subControls();
    void subControlsStayInside_data();
    void subControlsStayInside();
    void hitsAgreeWithPlaces_data();
    void hitsAgreeWithPlaces();
    void contentsTypes_data() { addRows<QStyle::ContentsType>(); }
    void contentsTypes();
    void metrics_data() { addRows<QStyle::PixelMetric>(); }
    void metrics();
    void hints_data() { addRows<QStyle::StyleHint>(); }
    void hints();
    void standardIcons_data() { addRows<QStyle::StandardPixmap>(); }
    void standardIcons();
};

void TestStyleSweepGeometry::initTestCase()
{
    initialiseResources();
    installAppearance(Theme::Dark);
}

void TestStyleSweepGeometry::subElements()
{
    QFETCH(int, value);
    const auto element = QStyle::SubElement(value);
    const Style style;
    const QWidget widget;
    forEveryOption(element, [&](const QStyleOption &option, bool isOwn) {
        const QRect rect = style.subElementRect(element, &option);
        style.subElementRect(element, &option, &widget);
        if (isOwn && option.rect == ordinaryRect())
            QVERIFY2(rect.width() < 10000 && rect.height() < 10000, "a rectangle beyond reason");
    });
}

void TestStyleSweepGeometry::subControls()
{
    QFETCH(int, value);
    const auto control = QStyle::ComplexControl(value);
    const Style style;
    const QWidget widget;
    forEveryOption(control, [&](const QStyleOption &option, bool) {
        const auto *complex = qstyleoption_cast<const QStyleOptionComplex *>(&option);
        if (!complex)
            return;
        for (const QStyle::SubControl part : singleParts()) {
            style.subControlRect(control, complex, part);
            style.subControlRect(control, complex, part, &widget);
        }
        for (const QPoint &point : {QPoint(), option.rect.center(), QPoint(-5, 9999)})
            style.hitTestComplexControl(control, complex, point, &widget);
    });
}

void TestStyleSweepGeometry::subControlsStayInside_data()
{
    addRows<QStyle::ComplexControl>();
}

void TestStyleSweepGeometry::subControlsStayInside()
{
    QFETCH(int, value);
    const auto control = QStyle::ComplexControl(value);
    const Style style;
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        const auto option = makeOption(control);
        option->rect = ordinaryRect();
        option->direction = direction;
        for (const QStyle::SubControl part : singleParts()) {
            // the popup of a combo box is a window of its own
            if (control == QStyle::CC_ComboBox && part == QStyle::SC_ComboBoxListBoxPopup)
                continue;
            const QRect rect = style.subControlRect(control, option.get(), part);
            QVERIFY2(liesWithin(rect, option->rect), QByteArray::number(int(part), 16));
        }
    }
}

void TestStyleSweepGeometry::hitsAgreeWithPlaces_data()
{
    addRows<QStyle::ComplexControl>();
}

void TestStyleSweepGeometry::hitsAgreeWithPlaces()
{
    QFETCH(int, value);
    const auto control = QStyle::ComplexControl(value);
    const Style style;
    const auto option = makeOption(control);
    option->rect = ordinaryRect();
    for (int x = option->rect.left(); x <= option->rect.right(); ++x) {
        const QPoint point(x, option->rect.center().y());
        const QStyle::SubControl hit = style.hitTestComplexControl(control, option.get(), point);
        if (hit == QStyle::SC_None || control == QStyle::CC_Dial)
            continue;
        QVERIFY2(style.subControlRect(control, option.get(), hit).contains(point),
                 QByteArray::number(int(hit), 16));
    }
}

void TestStyleSweepGeometry::contentsTypes()
{
    QFETCH(int, value);
    const auto type = QStyle::ContentsType(value);
    const Style style;
    const QWidget widget;
    forEveryOption(type, [&](const QStyleOption &option, bool) {
        for (const QSize &contents : {QSize(0, 0), QSize(80, 16), QSize(500, 300)})
            for (const QWidget *each : {static_cast<const QWidget *>(nullptr), &widget}) {
                const QSize size = style.sizeFromContents(type, &option, contents, each);
                QVERIFY(size.width() >= 0 && size.height() >= 0);
            }
    });
}

void TestStyleSweepGeometry::metrics()
{
    QFETCH(int, value);
    const auto metric = QStyle::PixelMetric(value);
    const Style style;
    const QWidget widget;
    const QPlainTextEdit area;
    for (int kind = 0; kind < optionKindCount; ++kind)
        for (const QWidget *each : {static_cast<const QWidget *>(nullptr), &widget,
                                    static_cast<const QWidget *>(&area)}) {
            const auto option = makeOption(OptionKind(kind));
            // -1 is Qt's word for "as the platform has it"
            QVERIFY(style.pixelMetric(metric, option.get(), each) >= -1);
        }
    QVERIFY(style.pixelMetric(metric) >= -1);
}

void TestStyleSweepGeometry::hints()
{
    QFETCH(int, value);
    const auto hint = QStyle::StyleHint(value);
    const Style style;
    const QWidget widget;
    QStyleHintReturn plain;
    QStyleHintReturnMask mask;
    QStyleHintReturnVariant variant;
    for (QStyleHintReturn *returned :
         {static_cast<QStyleHintReturn *>(nullptr), &plain, static_cast<QStyleHintReturn *>(&mask),
          static_cast<QStyleHintReturn *>(&variant)}) {
        const int without = style.styleHint(hint, nullptr, nullptr, returned);
        QCOMPARE(style.styleHint(hint, nullptr, nullptr, returned), without);
        for (int kind = 0; kind < optionKindCount; ++kind) {
            const auto option = makeOption(OptionKind(kind));
            style.styleHint(hint, option.get(), nullptr, returned);
            style.styleHint(hint, option.get(), &widget, returned);
        }
    }
}

void TestStyleSweepGeometry::standardIcons()
{
    QFETCH(int, value);
    const auto which = QStyle::StandardPixmap(value);
    const Style style;
    const QCommonStyle commonStyle;
    const QStyleOption option;
    const QWidget widget;
    const QIcon icon = style.standardIcon(which, &option, &widget);
    QCOMPARE(icon.isNull(), style.standardIcon(which).isNull());
    if (!commonStyle.standardIcon(which, &option, &widget).isNull())
        QVERIFY(!icon.isNull());
    style.standardPixmap(which, &option, &widget);
}

QTEST_MAIN(TestStyleSweepGeometry)
#include "tst_style_sweep_geometry.moc"
