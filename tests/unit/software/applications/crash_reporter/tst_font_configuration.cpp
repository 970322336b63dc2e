// Which fonts the program reads, and that what it ships for them is a configuration.

#include "crash_reporter/font_configuration.h"

#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QFontMetrics>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr char variable[] = "FONTCONFIG_FILE";

} // namespace

class FontConfigurationTest : public QObject
{
    Q_OBJECT

public:
    /** Before there is an application, which reads its fonts then. */
    static void initMain() { qputenv(variable, R4_FONTS_CONF); }

private slots:
    void init();
    void theFileBesideTheProgramIsRead();
    void whoeverSetAnotherIsRespected();
    void withoutTheFileTheSystemDecides();
    void aProgramThatCannotBeFoundChangesNothing();
    void whatIsShippedDrawsEveryText_data();
    void whatIsShippedDrawsEveryText();

private:
    std::string linkToProgram() const
    {
        return QFile::encodeName(place->filePath("exe")).toStdString();
    }
    void installFile() const;

    std::unique_ptr<QTemporaryDir> place;
};

void FontConfigurationTest::init()
{
    place = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(place->path()).mkpath("bin"));
    QVERIFY(QFile::link(place->filePath("bin/program"), place->filePath("exe")));
    qunsetenv(variable);
}

void FontConfigurationTest::installFile() const
{
    QVERIFY(QDir(place->path()).mkpath("share/r4_crash_reporter"));
    QFile file(place->filePath("share/r4_crash_reporter/fonts.conf"));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void FontConfigurationTest::theFileBesideTheProgramIsRead()
{
    installFile();
    useOwnFontConfiguration(linkToProgram());
    QCOMPARE(QFile::decodeName(qgetenv(variable)),
             place->filePath("share/r4_crash_reporter/fonts.conf"));
}

void FontConfigurationTest::whoeverSetAnotherIsRespected()
{
    installFile();
    qputenv(variable, "/elsewhere/fonts.conf");
    useOwnFontConfiguration(linkToProgram());
    QCOMPARE(qgetenv(variable), QByteArray("/elsewhere/fonts.conf"));
}

void FontConfigurationTest::withoutTheFileTheSystemDecides()
{
    useOwnFontConfiguration(linkToProgram());
    QVERIFY(!qEnvironmentVariableIsSet(variable));
}

void FontConfigurationTest::aProgramThatCannotBeFoundChangesNothing()
{
    installFile();
    useOwnFontConfiguration(QFile::encodeName(place->filePath("missing")).toStdString());
    QVERIFY(!qEnvironmentVariableIsSet(variable));
}

void FontConfigurationTest::whatIsShippedDrawsEveryText_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("found");
    QTest::newRow("a family that is not installed") << "No Such Family"
                                                    << "DejaVu Sans";
    QTest::newRow("one that is") << "DejaVu Sans"
                                 << "DejaVu Sans";
}

void FontConfigurationTest::whatIsShippedDrawsEveryText()
{
    QFETCH(QString, family);
    QFETCH(QString, found);
    const QFont font(family, 11, QFont::Light);
    QCOMPARE(QFontInfo(font).family(), found);
    const QFontMetrics metrics(font);
    for (const char16_t letter : {u'A', u'\u00e9', u'\u0416', u'\u20ac'})
        QVERIFY2(metrics.inFont(QChar(letter)), "a letter of the languages of the appliance");
}

QTEST_MAIN(FontConfigurationTest)
#include "tst_font_configuration.moc"
