#include "application_fixture.h"

#include <QDataStream>
#include <QDir>
#include <QFile>

namespace TestSupport {

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
