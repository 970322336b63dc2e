#include "vireling/palette/theme.h"

#include <QTranslator>
#include <QtTest>

using namespace Vireling;

namespace {

/** Puts brackets around what is translated in one context. */
class BracketTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        if (qstrcmp(context, "Theme") != 0)
            return QString();
        return QStringLiteral("[%1]").arg(QLatin1String(sourceText));
    }
};

} // namespace

class TestTheme : public QObject
{
    Q_OBJECT

private slots:
    void themesHaveNames_data();
    void themesHaveNames();
    void anyOtherValueHasNoName();
    void systemIsDark();
    void theThemesFolderIsSearchedFirst_data();
    void theThemesFolderIsSearchedFirst();
};

void TestTheme::themesHaveNames_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QString>("name");
    QTest::newRow("system") << 0 << "System";
    QTest::newRow("dark") << 1 << "Dark";
    QTest::newRow("light") << 2 << "Light";
}

void TestTheme::themesHaveNames()
{
    QFETCH(int, theme);
    QFETCH(QString, name);
    QCOMPARE(themeName(Theme(theme)), name);

    BracketTranslator translator;
    QCoreApplication::installTranslator(&translator);
    QCOMPARE(themeName(Theme(theme)), "[" + name + "]");
    QCoreApplication::removeTranslator(&translator);
}

void TestTheme::anyOtherValueHasNoName()
{
    QCOMPARE(themeName(Theme(3)), QString());
    QCOMPARE(themeName(Theme(255)), QString());
}

void TestTheme::systemIsDark()
{
    QCOMPARE(resolveTheme(Theme::System), Theme::Dark);
    QCOMPARE(resolveTheme(Theme::Dark), Theme::Dark);
    QCOMPARE(resolveTheme(Theme::Light), Theme::Light);
}

void TestTheme::theThemesFolderIsSearchedFirst_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QStringList>("paths");
    QTest::newRow("system") << 0 << QStringList{":/dark", ":/"};
    QTest::newRow("dark") << 1 << QStringList{":/dark", ":/"};
    QTest::newRow("light") << 2 << QStringList{":/light", ":/"};
}

void TestTheme::theThemesFolderIsSearchedFirst()
{
    QFETCH(int, theme);
    QFETCH(QStringList, paths);
    QCOMPARE(themeSearchPaths(Theme(theme)), paths);
}

QTEST_GUILESS_MAIN(TestTheme)
#include "tst_theme.moc"
