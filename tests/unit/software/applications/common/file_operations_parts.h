#pragma once

#include "file_panel_fixture.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

/* What the tests of deleting, renaming, copying and pasting share. They run in the sandbox. */
namespace TestSupport {

/** While it lives the permissions of files count for this thread, although it is root's. */
class OrdinaryRights
{
public:
    OrdinaryRights()
    {
        syscall(SYS_capget, &header, before);
        __user_cap_data_struct reduced[2] = {before[0], before[1]};
        reduced[0].effective &= ~((1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH));
        syscall(SYS_capset, &header, reduced);
    }
    ~OrdinaryRights() { syscall(SYS_capset, &header, before); }
    Q_DISABLE_COPY(OrdinaryRights)

private:
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct before[2] = {};
};

/** The path of an entry of the internal storage. */
inline QString in(const QString &name)
{
    return internalFolder + QLatin1Char('/') + name;
}

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
}

/** Whether the folder has an entry of that name, be it a link that leads nowhere. */
inline bool isThere(const QString &path)
{
    return QFileInfo::exists(path) || QFileInfo(path).isSymLink();
}

/** Names that a careless path, pattern or label would misread. */
inline void addOddNames()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes") << QStringLiteral("say \"hello\" and 'bye'");
    QTest::newRow("newline") << QStringLiteral("two\nlines");
    QTest::newRow("markup") << QStringLiteral("<b>x &lt;");
    QTest::newRow("ampersand") << QStringLiteral("this & that");
    QTest::newRow("argument marks") << QStringLiteral("%1 %2 100%");
    QTest::newRow("pattern") << QStringLiteral("[a]*?");
    QTest::newRow("backslash") << QStringLiteral("a\\b");
    QTest::newRow("emoji") << QString::fromUtf8("\xF0\x9F\x94\x91 key");
    QTest::newRow("right to left") << QString::fromUtf8("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D");
    QTest::newRow("blanks") << QStringLiteral("  ");
    QTest::newRow("dash") << QStringLiteral("-rf");
    QTest::newRow("255 bytes") << QString(255, QLatin1Char('n'));
}

} // namespace TestSupport
