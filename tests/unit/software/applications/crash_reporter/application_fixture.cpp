#include "application_fixture.h"

#include <QDataStream>
#include <QDir>
#include <QFile>

namespace TestSupport {

namespace {

/** Not by qobject_cast: the backdrop has no meta-object of its own. */
template <typename Screen>
Screen *shownScreen()
{
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (auto *screen = dynamic_cast<Screen *>(widget))
            return screen;
    return nullptr;
}

} // namespace

void RunningReporter::end()
{
    if (!app)
        return;
    app->cancelAutoAction();                          // or it could still count on the screen
    while (CrashReportWidget *screen = crashScreen()) // a test may report several crashes
        delete screen;
    delete backdrop();
    app.reset();
}

SafeShutdownWidget *RunningReporter::backdrop() const
{
    return shownScreen<SafeShutdownWidget>();
}

CrashReportWidget *RunningReporter::crashScreen() const
{
    return shownScreen<CrashReportWidget>();
}

QStringList packages()
{
    return QDir(packageFolder).entryList(QDir::Files, QDir::Name);
}

int unmounts()
{
    return static_cast<int>(KernelFakes::instance().calls(KernelFunction::Unmount).size());
}

int reboots()
{
    return static_cast<int>(KernelFakes::instance().calls(KernelFunction::Reboot).size());
}

void ApplicationFixture::initTestCase()
{
    QVERIFY2(qEnvironmentVariableIsSet("R4_SANDBOX"),
             "this test writes into /user_data: run it in the sandbox");
    QVERIFY(Tessel::sharedClientInfo());
}

void ApplicationFixture::init()
{
    scratch = std::make_unique<QTemporaryDir>();
    log = std::make_unique<LogCapture>();
    KernelFakes::instance().reset();
    *Tessel::sharedClientInfo() = {};
}

void ApplicationFixture::cleanup()
{
    log.reset();
    QDir(packageFolder).removeRecursively();
}

QString ApplicationFixture::writeCrashFile(const QString &dump)
{
    QString path = scratch->filePath(QStringLiteral("crash_data"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    QDataStream stream(&file);
    stream << dump << QDateTime(QDate(2026, 11, 21), QTime(12, 0))
           << QStringList{QStringLiteral("last words")};
    return path;
}

QString ApplicationFixture::crashFile()
{
    QFile dump(scratch->filePath(QStringLiteral("r4.core")));
    if (!dump.open(QIODevice::WriteOnly))
        return {};
    dump.write("a core image");
    return writeCrashFile(dump.fileName());
}

} // namespace TestSupport
