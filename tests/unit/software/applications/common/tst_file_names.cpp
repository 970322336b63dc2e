// Names that operators type, and the paths that come of them.

#include "common/file_names.h"

#include <QTest>

class FileNamesTest : public QObject
{
    Q_OBJECT

private slots:
    void separatorsAndZerosAreTakenOut_data();
    void separatorsAndZerosAreTakenOut();
    void aNameIsOneEntryOfTheFolder_data();
    void aNameIsOneEntryOfTheFolder();
    void anExtensionIsAddedOnce_data();
    void anExtensionIsAddedOnce();
};

void FileNamesTest::separatorsAndZerosAreTakenOut_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    QTest::newRow("none") << "report 1.cdp"
                          << "report 1.cdp";
    QTest::newRow("way up") << "../x"
                            << "..x";
    QTest::newRow("absolute") << "/etc/passwd"
                              << "etcpasswd";
    QTest::newRow("nothing else") << "//"
                                  << "";
    QTest::newRow("a zero") << QStringLiteral("a") + QChar(0) + "b"
                            << "ab";
    QTest::newRow("a backslash is a letter") << "a\\b"
                                             << "a\\b";
}

void FileNamesTest::separatorsAndZerosAreTakenOut()
{
    QFETCH(QString, typed);
    QTEST(withoutSeparators(typed), "name");
}

void FileNamesTest::aNameIsOneEntryOfTheFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << "report"
                           << "/usbkey/report";
    QTest::newRow("no name") << "" << QString();
    QTest::newRow("the folder itself") << "." << QString();
    QTest::newRow("the folder above") << ".." << QString();
    QTest::newRow("three dots") << "..."
                                << "/usbkey/...";
    QTest::newRow("hidden") << ".cdp"
                            << "/usbkey/.cdp";
}

void FileNamesTest::aNameIsOneEntryOfTheFolder()
{
    QFETCH(QString, name);
    QTEST(pathOfName(QStringLiteral("/usbkey"), name), "path");
}

void FileNamesTest::anExtensionIsAddedOnce_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("filters");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("missing") << "/k/a"
                             << "*.cdp"
                             << "/k/a.cdp";
    QTest::newRow("there") << "/k/a.cdp"
                           << "*.cdp"
                           << "/k/a.cdp";
    QTest::newRow("upper case is another") << "/k/a.CDP"
                                           << "*.cdp"
                                           << "/k/a.CDP.cdp";
    QTest::newRow("the second") << "/k/a.b"
                                << "*.a *.b"
                                << "/k/a.b";
    QTest::newRow("first that is one") << "/k/a"
                                       << "* *.b"
                                       << "/k/a.b";
    QTest::newRow("no extension") << "/k/a"
                                  << "*"
                                  << "/k/a";
    QTest::newRow("no filters") << "/k/a"
                                << ""
                                << "/k/a";
    QTest::newRow("from the last dot on") << "/k/a"
                                          << "*.tar.gz"
                                          << "/k/a.gz";
}

void FileNamesTest::anExtensionIsAddedOnce()
{
    QFETCH(QString, path);
    QFETCH(QString, filters);
    const QStringList patterns = filters.split(QLatin1Char(' '));
    QTEST(withExtension(path, patterns), "chosen");
    QCOMPARE(withExtension(withExtension(path, patterns), patterns), withExtension(path, patterns));
}

QTEST_GUILESS_MAIN(FileNamesTest)

#include "tst_file_names.moc"
