// Which fonts the program reads, and that what it ships for them is a configuration.

#include "crash_reporter/font_configuration.h"

#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QFontMetrics>
#include <QTemporaryDir>
#include <QTest>

#include <fontconfig/fontconfig.h>

namespace {

constexpr char variable[] = "FONTCONFIG_FILE";

/** Every file that the configuration in use was made of or knows of. */
QStringList filesLookedAt()
{
    QStringList files;
    FcConfigFileInfoIter iterator;
    FcConfigFileInfoIterInit(nullptr, &iterator);
    do {
        FcChar8 *name = nullptr;
        FcChar8 *description = nullptr;
        FcBool enabled = FcFalse;
        if (FcConfigFileInfoIterGet(nullptr, &iterator, &name, &description, &enabled))
            files.append(QFile::decodeName(reinterpret_cast<const char *>(name)));
        FcStrFree(name);
        FcStrFree(description);
    } while (FcConfigFileInfoIterNext(nullptr, &iterator));
    return files;
}

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
    void aDamagedFileChangesNothing();
    void aProgramThatCannotBeFoundChangesNothing();
    void whatIsShippedDrawsEveryText_data();
    void whatIsShippedDrawsEveryText();

private:
    std::string linkToProgram() const
    {
        return QFile::encodeName(place->filePath("exe")).toStdString();
    }
    QString installedFile() const { return place->filePath("share/r4_crash_reporter/fonts.conf"); }
    void installFile() const;

    std::unique_ptr<QTemporaryDir> place;
    const FcConfig *before = nullptr;
};

void FontConfigurationTest::init()
{
    place = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(place->path()).mkpath("bin"));
    QVERIFY(QFile::link(place->filePath("bin/program"), place->filePath("exe")));
    qunsetenv(variable);
    before = FcConfigGetCurrent();
}

void FontConfigurationTest::installFile() const
{
    QVERIFY(QDir(place->path()).mkpath("share/r4_crash_reporter"));
    QVERIFY(QFile::copy(R4_FONTS_CONF, installedFile()));
}

void FontConfigurationTest::theFileBesideTheProgramIsRead()
{
    installFile();
    useOwnFontConfiguration(linkToProgram());
    QVERIFY(FcConfigGetCurrent() != before);
    QCOMPARE(filesLookedAt(), QStringList(installedFile()));
}

void FontConfigurationTest::whoeverSetAnotherIsRespected()
{
    installFile();
    qputenv(variable, "/elsewhere/fonts.conf");
    useOwnFontConfiguration(linkToProgram());
    QCOMPARE(FcConfigGetCurrent(), before);
}

void FontConfigurationTest::withoutTheFileTheSystemDecides()
{
    useOwnFontConfiguration(linkToProgram());
    QCOMPARE(FcConfigGetCurrent(), before);
}

void FontConfigurationTest::aDamagedFileChangesNothing()
{
    installFile();
    QFile file(installedFile());
    QVERIFY(file.resize(file.size() / 2));
    useOwnFontConfiguration(linkToProgram());
    QCOMPARE(FcConfigGetCurrent(), before);
}

void FontConfigurationTest::aProgramThatCannotBeFoundChangesNothing()
{
    installFile();
    useOwnFontConfiguration(QFile::encodeName(place->filePath("missing")).toStdString());
    QCOMPARE(FcConfigGetCurrent(), before);
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
