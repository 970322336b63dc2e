#include "vireling/palette/process_initialisers.h"

#include <QtTest>

using namespace Vireling;

class TestProcessInitialisers : public QObject
{
    Q_OBJECT

private slots:
    void highDensitiesAreScaledByWholeNumbers();
    void iconsOfBothThemesAreCompiledIn();
    void furtherCallsRegisterNothingAgain();
    void theEmptyHookCanBeCalled();
};

void TestProcessInitialisers::highDensitiesAreScaledByWholeNumbers()
{
    QVERIFY(QCoreApplication::testAttribute(Qt::AA_EnableHighDpiScaling));
    QVERIFY(QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps));
    QCOMPARE(QGuiApplication::highDpiScaleFactorRoundingPolicy(),
             Qt::HighDpiScaleFactorRoundingPolicy::Round);
}

void TestProcessInitialisers::iconsOfBothThemesAreCompiledIn()
{
    for (const char *folder :
         {":/vireling_style/icons", ":/dark/vireling_style/icons", ":/light/vireling_style/icons"})
        QVERIFY2(!QDir(folder).entryList(QDir::Files).isEmpty(), folder);
}

/** A bundle registered twice would list everything twice. */
void TestProcessInitialisers::furtherCallsRegisterNothingAgain()
{
    const QStringList before = QDir(":/vireling_style/icons").entryList();
    initialiseResources();
    QStringList after = QDir(":/vireling_style/icons").entryList();
    QCOMPARE(after, before);
    QCOMPARE(after.removeDuplicates(), 0);
}

void TestProcessInitialisers::theEmptyHookCanBeCalled()
{
    initialiseToolkit();
    QVERIFY(QCoreApplication::instance());
}

int main(int argc, char **argv)
{
    initialiseHighDpi();
    initialiseResources();
    initialiseToolkit();
    QApplication application(argc, argv);
    TestProcessInitialisers tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "tst_process_initialisers.moc"
