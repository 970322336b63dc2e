#include "golden_control.h"
#include "support/golden_images.h"

#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QTest>

using Vireling::Theme;

Q_DECLARE_METATYPE(const GoldenControl *)

namespace {

constexpr int cellMargin = 6;

struct SeriesState
{
    QStyle::State state;
    QPalette::ColorGroup group;
};

/** default, focused, hover, pressed, checked, disabled, inactive */
const std::vector<SeriesState> &series()
{
    const QStyle::State usual = QStyle::State_Enabled | QStyle::State_Active;
    static const std::vector<SeriesState> states{
        {usual, QPalette::Active},
        {usual | QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange, QPalette::Active},
        {usual | QStyle::State_MouseOver, QPalette::Active},
        {usual | QStyle::State_MouseOver | QStyle::State_Sunken, QPalette::Active},
        {usual | QStyle::State_On, QPalette::Active},
        {QStyle::State_Active, QPalette::Disabled},
        {QStyle::State_Enabled, QPalette::Inactive},
    };
    return states;
}

QImage strip(const GoldenControl &control, int ratio)
{
    const auto &style = *static_cast<Vireling::Style *>(QApplication::style());
    const QSize cell = control.size + QSize(2 * cellMargin, 2 * cellMargin);
    QImage image(QSize(cell.width() * int(series().size()), cell.height()) * ratio,
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(style.palette().color(QPalette::Active, QPalette::Window));
    QPainter painter(&image);
    painter.setFont(QApplication::font());
    QPoint corner(cellMargin, cellMargin);
    for (const SeriesState &shown : series()) {
        QPalette palette = style.standardPalette();
        palette.setCurrentColorGroup(shown.group);
        control.draw({style, painter, QRect(corner, control.size), shown.state, palette});
        corner.rx() += cell.width();
    }
    return image;
}

} // namespace

/** Every control in every state of the series, against pictures that were looked at. */
class GoldenTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Vireling::initialiseResources(); }

    void controlsLookAsReviewed_data()
    {
        QTest::addColumn<Theme>("theme");
        QTest::addColumn<int>("ratio");
        QTest::addColumn<const GoldenControl *>("control");
        for (const Theme theme : {Theme::Dark, Theme::Light})
            for (const GoldenControl &control : controls) {
                const QByteArray themeName = theme == Theme::Dark ? "dark" : "light";
                QTest::newRow(themeName + "/" + control.name) << theme << 1 << &control;
            }
        for (const GoldenControl &control : controls)
            QTest::newRow(QByteArray("dark/double/") + control.name)
                << Theme::Dark << 2 << &control;
    }

    void controlsLookAsReviewed()
    {
        QFETCH(Theme, theme);
        QFETCH(int, ratio);
        QFETCH(const GoldenControl *, control);
        if (theme != installed) {
            Vireling::installAppearance(theme);
            installed = theme;
        }
        const QString difference = TestSupport::compareWithGolden(
            QString::fromLatin1(QTest::currentDataTag()), strip(*control, ratio));
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

private:
    static std::vector<GoldenControl> allControls()
    {
        std::vector<GoldenControl> all;
        for (const auto &some : {goldenFields(), goldenRanges(), goldenViews(), goldenContainers()})
            all.insert(all.end(), some.begin(), some.end());
        return all;
    }

    const std::vector<GoldenControl> controls = allControls();
    Theme installed = Theme::System;
};

QTEST_MAIN(GoldenTest)
#include "tst_golden.moc"
