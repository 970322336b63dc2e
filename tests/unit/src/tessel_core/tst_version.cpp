#include "tessel_core/version.h"

#include <QtTest>

#include <cstring>

using namespace Tessel;

Q_DECLARE_METATYPE(Tessel::Version)

namespace {

/** A version of four distinct bytes for each build byte there is. */
Version versionWithBuild(int build)
{
    return {1, 2, 3, quint8(build)};
}

QString kindNameText(int kind, bool longStyle)
{
    return QString::fromStdString(std::string(kindName(quint8(kind), longStyle)));
}

} // namespace

class TestVersion : public QObject
{
    Q_OBJECT

private slots:
    void theFieldsLieInOrderInFourBytes();
    void theBuildByteHoldsKindAndNumber();
    void everyKindHasItsNames_data();
    void everyKindHasItsNames();
    void noOtherValueIsAKind();
    void packingPutsMajorInTheLowestByte();
    void everyBuildByteSurvivesPacking();
    void textsAreParsed_data();
    void textsAreParsed();
    void textsOfAnyOtherFormGiveZero_data();
    void textsOfAnyOtherFormGiveZero();
    void aBuildNumberOf64OrMoreSpillsIntoTheKind_data();
    void aBuildNumberOf64OrMoreSpillsIntoTheKind();
    void foreignDigitsMatchButCountAsZero();
    void bytesAreInFieldOrder();
    void everyBuildByteButAReleaseNumberSurvivesTheBytes();
    void missingBytesReadAsZero_data();
    void missingBytesReadAsZero();
    void furtherBytesAreIgnored();
    void versionsAreShownLongAndShort_data();
    void versionsAreShownLongAndShort();
    void everyLongTextParsesBackButAReleaseNumber();
    void everyShortTextParsesBackButAReleaseNumber();
    void patternsAreFilledIn_data();
    void patternsAreFilledIn();
    void oddPatternsHaveADefinedResult_data();
    void oddPatternsHaveADefinedResult();
};

void TestVersion::theFieldsLieInOrderInFourBytes()
{
    const Version version = {1, 2, 3, 4};
    QCOMPARE(std::memcmp(&version, "\1\2\3\4", sizeof version), 0);
}

void TestVersion::theBuildByteHoldsKindAndNumber()
{
    for (int build = 0; build < 256; ++build) {
        QCOMPARE(int(kindOf(versionWithBuild(build))), build / 64 * 64);
        QCOMPARE(int(buildNumberOf(versionWithBuild(build))), build % 64);
    }
}

void TestVersion::everyKindHasItsNames_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("longName");
    QTest::addColumn<QString>("shortName");
    QTest::newRow("release") << 0 << ""
                             << "";
    QTest::newRow("release candidate") << 64 << "RC"
                                       << "RC";
    QTest::newRow("beta") << 128 << "BETA"
                          << "B";
    QTest::newRow("debug") << 192 << "DEBUG"
                           << "D";
}

void TestVersion::everyKindHasItsNames()
{
    QFETCH(int, kind);
    QFETCH(QString, longName);
    QFETCH(QString, shortName);
    QCOMPARE(kindNameText(kind, true), longName);
    QCOMPARE(kindNameText(kind, false), shortName);
    // The documented NUL behind the last character.
    QCOMPARE(kindName(quint8(kind), true).data()[longName.size()], '\0');
}

void TestVersion::noOtherValueIsAKind()
{
    for (int value = 0; value < 256; ++value) {
        const bool isNamed = value == 64 || value == 128 || value == 192;
        QCOMPARE(!kindName(quint8(value), true).empty(), isNamed);
        QCOMPARE(!kindName(quint8(value), false).empty(), isNamed);
    }
}

void TestVersion::packingPutsMajorInTheLowestByte()
{
    QCOMPARE(packVersion({0x11, 0x22, 0x33, 0xC4}), 0xC4332211U);
    QCOMPARE(packVersion({255, 255, 255, 255}), 0xFFFFFFFFU);
    const Version version = unpackVersion(0xC4332211U);
    QCOMPARE(int(version.major), 0x11);
    QCOMPARE(int(version.minor), 0x22);
    QCOMPARE(int(version.patch), 0x33);
    QCOMPARE(int(version.build), 0xC4);
}

void TestVersion::everyBuildByteSurvivesPacking()
{
    for (int build = 0; build < 256; ++build) {
        const quint32 packed = packVersion(versionWithBuild(build));
        QCOMPARE(packVersion(unpackVersion(packed)), packed);
        QCOMPARE(int(unpackVersion(packed).build), build);
    }
}

void TestVersion::textsAreParsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Version>("version");
    const auto row = [](const char *text, const Version &version) {
        QTest::newRow(text) << QString(text) << version;
    };
    row("0.0", {0, 0, 0, 0});
    row("2.5", {2, 5, 0, 0});
    row("10.20", {10, 20, 0, 0});
    row("2.5.1", {2, 5, 1, 0});
    row("002.05.0001", {2, 5, 1, 0});
    row("255.255.255", {255, 255, 255, 0});
    row("2.5.1 RC2", {2, 5, 1, 66});
    row("2.5.1.RC2", {2, 5, 1, 66});
    row("2.5.1.BETA3", {2, 5, 1, 131});
    row("1.2.3.DEBUG7", {1, 2, 3, 199});
    row("1.2.3 DEBUG63", {1, 2, 3, 255});
    row("2.5 RC0", {2, 5, 0, 64});
    row("2.5.RC2", {2, 5, 0, 66});
    // Each number keeps its low eight bits.
    row("300.1", {44, 1, 0, 0});
    row("1.256.511", {1, 0, 255, 0});
    row("4294967295.1", {255, 1, 0, 0});
    // Past 32 bits there is no value left to keep bits of.
    row("4294967297.1", {0, 1, 0, 0});
}

void TestVersion::textsAreParsed()
{
    QFETCH(QString, text);
    QFETCH(Version, version);
    QCOMPARE(parseVersion(text), packVersion(version));
}

void TestVersion::textsOfAnyOtherFormGiveZero_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"",           "2",           "2.",         ".5",         "2.5.",         "2.5.1.",
          "2.5.1.4",    "2.5.1RC2",    "2.5.1  RC2", "2.5.1-RC2",  "2.5.1.RC",     "2.5.1 RC 2",
          "2.5.1.rc2",  "2.5.1.Beta3", "2.5.1.B3",   "2.5.1.D3",   "2.5.1.ALPHA1", "2.5.1.RC2.",
          "2.5.1 RC2 ", " 2.5.1",      "2.5.1 ",     "2.5.1\n",    "v2.5.1",       "2.5.1.RC2x",
          "2,5",        "-2.5",        "2.+5",       "2.5.1.RC-2", "0x2.5",        "text"})
        QTest::newRow(qPrintable(QString("'%1'").arg(text))) << QString(text);
}

void TestVersion::textsOfAnyOtherFormGiveZero()
{
    QFETCH(QString, text);
    QCOMPARE(parseVersion(text), 0U);
}

void TestVersion::aBuildNumberOf64OrMoreSpillsIntoTheKind_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("build");
    QTest::newRow("its bit is already the kind's") << "1.2.3.RC64" << 64;
    QTest::newRow("a beta becomes a debug build") << "1.2.3.BETA64" << 192;
    QTest::newRow("a candidate becomes a debug build") << "1.2.3.RC130" << 194;
    QTest::newRow("the highest byte") << "1.2.3.RC255" << 255;
    QTest::newRow("only eight bits are kept") << "1.2.3.BETA256" << 128;
    QTest::newRow("eight bits of more") << "1.2.3.BETA300" << 172;
}

void TestVersion::aBuildNumberOf64OrMoreSpillsIntoTheKind()
{
    QFETCH(QString, text);
    QFETCH(int, build);
    QCOMPARE(parseVersion(text), packVersion(versionWithBuild(build)));
}

void TestVersion::foreignDigitsMatchButCountAsZero()
{
    // Arabic-Indic two and five; the rest of the text is read as usual.
    const QString two(QChar(0x662));
    const QString five(QChar(0x665));
    QCOMPARE(parseVersion(two + "." + five + ".7"), packVersion({0, 0, 7, 0}));
    QCOMPARE(parseVersion("1.2.3.BETA" + five), packVersion({1, 2, 3, 128}));
    QCOMPARE(parseVersion("1" + two + ".3"), packVersion({0, 3, 0, 0}));
}

void TestVersion::bytesAreInFieldOrder()
{
    QCOMPARE(toByteArray({1, 2, 3, 199}), QByteArray("\1\2\3\xC7"));
    QCOMPARE(toByteArray({0, 0, 0, 0}), QByteArray(4, '\0'));
}

void TestVersion::everyBuildByteButAReleaseNumberSurvivesTheBytes()
{
    QCOMPARE(fromByteArray(QByteArray("\1\2\3\5")), packVersion({1, 2, 3, 0}));
    for (int build = 0; build < 256; ++build) {
        const int survived = build < 64 ? 0 : build;
        QCOMPARE(fromByteArray(toByteArray(versionWithBuild(build))),
                 packVersion(versionWithBuild(survived)));
    }
}

void TestVersion::missingBytesReadAsZero_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Version>("version");
    QTest::newRow("null") << QByteArray() << Version{0, 0, 0, 0};
    QTest::newRow("one") << QByteArray("\1") << Version{1, 0, 0, 0};
    QTest::newRow("two") << QByteArray("\1\2") << Version{1, 2, 0, 0};
    QTest::newRow("three") << QByteArray("\1\2\3") << Version{1, 2, 3, 0};
}

void TestVersion::missingBytesReadAsZero()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Version, version);
    QCOMPARE(fromByteArray(bytes), packVersion(version));
}

void TestVersion::furtherBytesAreIgnored()
{
    QCOMPARE(fromByteArray(QByteArray("\1\2\3\x42\5\6")), packVersion({1, 2, 3, 0x42}));
}

void TestVersion::versionsAreShownLongAndShort_data()
{
    QTest::addColumn<Version>("version");
    QTest::addColumn<QString>("longText");
    QTest::addColumn<QString>("shortText");
    const auto row = [](const Version &version, const char *longText, const char *shortText) {
        QTest::newRow(longText) << version << QString(longText) << QString(shortText);
    };
    row({0, 0, 0, 0}, "0.0.0", "0.0");
    row({2, 5, 0, 0}, "2.5.0", "2.5");
    row({2, 5, 1, 0}, "2.5.1", "2.5.1");
    row({255, 254, 253, 0}, "255.254.253", "255.254.253");
    row({2, 5, 1, 131}, "2.5.1.BETA3", "2.5.1 BETA3");
    row({2, 5, 0, 64}, "2.5.0.RC0", "2.5 RC0");
    row({1, 2, 3, 199}, "1.2.3.DEBUG7", "1.2.3 DEBUG7");
    row({1, 2, 0, 255}, "1.2.0.DEBUG63", "1.2 DEBUG63");
    // A release has no build number to show.
    row({2, 5, 2, 63}, "2.5.2", "2.5.2");
}

void TestVersion::versionsAreShownLongAndShort()
{
    QFETCH(Version, version);
    QFETCH(QString, longText);
    QFETCH(QString, shortText);
    QCOMPARE(toString(version, true), longText.toStdString());
    QCOMPARE(toString(version, false), shortText.toStdString());
    QCOMPARE(toQString(version, true), longText);
    QCOMPARE(toQString(version, false), shortText);
}

void TestVersion::everyLongTextParsesBackButAReleaseNumber()
{
    for (int build = 0; build < 256; ++build) {
        const int survived = build < 64 ? 0 : build;
        QCOMPARE(parseVersion(toQString(versionWithBuild(build), true)),
                 packVersion(versionWithBuild(survived)));
    }
}

void TestVersion::everyShortTextParsesBackButAReleaseNumber()
{
    for (const quint8 patch : {quint8(0), quint8(3)}) {
        for (int build = 0; build < 256; ++build) {
            const Version version = {1, 2, patch, quint8(build)};
            const Version survived = {1, 2, patch, quint8(build < 64 ? 0 : build)};
            QCOMPARE(parseVersion(toQString(version, false)), packVersion(survived));
        }
    }
}

void TestVersion::patternsAreFilledIn_data()
{
    QTest::addColumn<Version>("version");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const Version &version, const char *pattern,
                        const char *text) {
        QTest::newRow(name) << version << QString(pattern) << QString(text);
    };
    const Version release = {2, 5, 0, 9};
    const Version candidate = {2, 5, 1, 66};
    const Version beta = {2, 5, 1, 131};
    const Version debug = {2, 5, 1, 192};
    row("nothing", beta, "", "");
    row("no placeholder", beta, "a text", "a text");
    row("the numbers", beta, "%M.%m.%p-%n", "2.5.1-3");
    row("side by side", beta, "%M%m%p%n", "2513");
    row("candidate: names", candidate, "%T %t", "RC RC");
    row("candidate: with number", candidate, "%B %b", "RC2 RC2");
    row("beta: names", beta, "%T %t", "BETA B");
    row("beta: with number", beta, "%B %b", "BETA3 B3");
    row("debug: names", debug, "%T %t", "DEBUG D");
    row("debug: number 0 is shown", debug, "%B %b", "DEBUG0 D0");
    row("release: no kind", release, "[%T%t%B%b]", "[]");
    row("release: its build number is a number", release, "%n", "9");
    row("section with output", beta, "%M.%m< build %b>!", "2.5 build B3!");
    row("section without output", release, "%M.%m< build %b>!", "2.5!");
    row("section with one output of two", release, "< %B %p>", "  0");
    row("a zero is output", release, "<patch %p>", "patch 0");
    row("section without placeholder", beta, "a<b>c", "ac");
    row("empty section", beta, "a<>c", "ac");
    row("each section by itself", release, "<%T><%M><%t>", "2");
    row("output outside does not count", beta, "%M<x>%m", "25");
    row("section at the end", beta, "%M<.%T>", "2.BETA");
}

void TestVersion::patternsAreFilledIn()
{
    QFETCH(Version, version);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(formatVersion(version, pattern), text);
}

void TestVersion::oddPatternsHaveADefinedResult_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *pattern, const char *text) {
        QTest::newRow(name) << QString(pattern) << QString(text);
    };
    row("unknown letter", "%x %N %P", "%x %N %P");
    row("unknown letter is no output", "<%x>", "");
    row("two per-cent signs", "%%", "%%");
    row("per-cent sign before a placeholder", "%%M", "%2");
    row("per-cent sign at the end", "%M%", "2%");
    row("per-cent sign before a section", "%<%M>", "%2");
    row("per-cent sign at the end of a section", "<%M%>", "2%");
    row("unclosed section with output", "a<b%M", "ab2");
    row("unclosed section without output", "a<b", "a");
    row("opening at the end", "a<", "a");
    row("closing outside", "a>b%M>", "a>b2>");
    row("opening within a section", "<a<%M>b>", "a<2b>");
    row("not ASCII", "\xC3\xA9%M<\xC3\xA9%m>",
        "\xC3\xA9"
        "2\xC3\xA9"
        "5");
}

void TestVersion::oddPatternsHaveADefinedResult()
{
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(formatVersion({2, 5, 1, 131}, pattern), text);
}

QTEST_APPLESS_MAIN(TestVersion)
#include "tst_version.moc"
