#include "vireling/palette/enums.h"

#include <QMetaEnum>
#include <QtTest>

using namespace Vireling;

namespace {

/** "Name=value" of each, in the order of declaration. */
QStringList entriesOf(const QMetaEnum &metaEnum)
{
    QStringList entries;
    for (int index = 0; index < metaEnum.keyCount(); ++index)
        entries += QStringLiteral("%1=%2")
                       .arg(QLatin1String(metaEnum.key(index)))
                       .arg(metaEnum.value(index));
    return entries;
}

} // namespace

class TestEnums : public QObject
{
    Q_OBJECT

private slots:
    void colourRolesComeOutAsText();
    void themesComeOutAsText();
    void windowControlsComeOutAsText();
    void aThemeIsOneByte();
    void loggingWritesTheName();
};

void TestEnums::colourRolesComeOutAsText()
{
    const QStringList names{"ActiveBase",
                            "ActiveText",
                            "HoverBase",
                            "Frame",
                            "PanelFrame",
                            "CellBase",
                            "CellAltBase",
                            "CellText",
                            "TableGrid",
                            "ViewItemBase",
                            "ViewItemAltBase",
                            "ViewItemText",
                            "ViewItemActiveBase",
                            "ViewItemActiveText",
                            "HeaderBase",
                            "HeaderText",
                            "SliderBase",
                            "ScrollBarBase",
                            "ScrollBarControlBase",
                            "ScrollBarControlFrame",
                            "TabBase",
                            "IndicatorBase",
                            "ArrowIconBase",
                            "MenuIconBase",
                            "AlternateHighlight",
                            "Success",
                            "Warning",
                            "Error",
                            "NColourRoles"};
    QStringList expected;
    for (int value = 0; value < names.size(); ++value)
        expected += names[value] + "=" + QString::number(value);
    QCOMPARE(entriesOf(QMetaEnum::fromType<ColourRole>()), expected);
}

void TestEnums::themesComeOutAsText()
{
    QCOMPARE(entriesOf(QMetaEnum::fromType<Theme>()),
             (QStringList{"System=0", "Dark=1", "Light=2"}));
}

void TestEnums::windowControlsComeOutAsText()
{
    QCOMPARE(entriesOf(QMetaEnum::fromType<WindowControl>()),
             (QStringList{"Close=0", "Maximise=1", "Minimise=2", "Restore=3"}));
}

void TestEnums::aThemeIsOneByte()
{
    QCOMPARE(sizeof(Theme), std::size_t(1));
}

void TestEnums::loggingWritesTheName()
{
    QString text;
    QDebug(&text) << ColourRole::ArrowIconBase;
    QVERIFY2(text.contains("ArrowIconBase"), qPrintable(text));
}

QTEST_APPLESS_MAIN(TestEnums)
#include "tst_enums.moc"
