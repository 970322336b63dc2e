#include "contrast_pairs.h"

#include "vireling/palette/contrast.h"
#include "vireling/palette/theme.h"

#include <QFile>
#include <QTest>

using Vireling::ElementContext;
using Vireling::Theme;

namespace {

struct Measured
{
    QColor foreground;
    QColor ground;
    double ratio;
};

Measured measure(const ContrastPair &pair, Theme theme)
{
    const Vireling::Style style(Vireling::themePalette(theme));
    QStyleOption option;
    option.state = pair.state;
    option.palette = style.standardPalette();
    const ElementContext context(style, option, nullptr);
    const QColor foreground = pair.foreground(context);
    const QColor ground = pair.ground(context);
    return {foreground, ground, Vireling::contrastRatio(foreground, ground)};
}

QString tableOf(Theme theme)
{
    QString table = "| what | foreground | ground | contrast | needs | why less |\n"
                    "|---|---|---|---|---|---|\n";
    for (const ContrastPair &pair : contrastPairs()) {
        const Measured found = measure(pair, theme);
        const char *reason = theme == Theme::Dark ? pair.darkReason : pair.lightReason;
        table += QStringLiteral("| %1 | `%2` | `%3` | %4 | %5 | %6 |\n")
                     .arg(QString(pair.what), found.foreground.name(), found.ground.name(),
                          QString::number(found.ratio, 'f', 2),
                          QString::number(pair.required, 'f', 1), QString(reason));
    }
    return table;
}

QString document()
{
    return "# Contrast\n\n"
           "Text and shapes on their grounds in every enabled state the style draws, worked out\n"
           "from the two palettes by `tst_contrast`, which fails when this page no longer tells\n"
           "what is drawn. Contrast is that of WCAG 2.1. Pairs below what they need give the\n"
           "reason: the palette is fixed.\n\n"
           "## Dark\n\n" +
           tableOf(Theme::Dark) + "\n## Light\n\n" + tableOf(Theme::Light);
}

} // namespace

class ContrastTest : public QObject
{
    Q_OBJECT

private slots:
    void pairsReachWhatTheyNeedOrSayWhyNot_data()
    {
        QTest::addColumn<int>("pair");
        QTest::addColumn<Theme>("theme");
        const auto pairs = contrastPairs();
        for (int index = 0; index < int(pairs.size()); ++index) {
            const char *what = pairs[std::size_t(index)].what;
            QTest::addRow("dark: %s", what) << index << Theme::Dark;
            QTest::addRow("light: %s", what) << index << Theme::Light;
        }
    }

    void pairsReachWhatTheyNeedOrSayWhyNot()
    {
        QFETCH(int, pair);
        QFETCH(Theme, theme);
        const ContrastPair shown = contrastPairs()[std::size_t(pair)];
        const Measured found = measure(shown, theme);
        const bool excused = theme == Theme::Dark ? shown.darkReason : shown.lightReason;
        const bool reached = found.ratio >= shown.required;
        QVERIFY2(reached != excused,
                 qPrintable(QStringLiteral("%1 on %2: %3")
                                .arg(found.foreground.name(), found.ground.name())
                                .arg(found.ratio)));
    }

    void thePageTellsWhatIsDrawn()
    {
        QFile page(QStringLiteral(R4_CONTRAST_PAGE));
        if (qEnvironmentVariableIsSet("R4_RENEW_GOLDEN")) {
            QVERIFY(page.open(QFile::WriteOnly));
            page.write(document().toUtf8());
            QFAIL("renewed");
        }
        QVERIFY(page.open(QFile::ReadOnly));
        QCOMPARE(QString::fromUtf8(page.readAll()), document());
    }
};

QTEST_MAIN(ContrastTest)
#include "tst_contrast.moc"
