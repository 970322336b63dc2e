#include "file_clipboard_fixture.h"

#include <QAction>
#include <QDir>
#include <QTest>

namespace TestSupport {

void FileClipboardFixture::init()
{
    emptyScratchMachine();
    makeFolders({in("working directory"), in("from"), in("to")});
    QVERIFY(QDir::setCurrent(in("working directory")));
    panel = PanelUnderTest::atInternalStorage();
}

void FileClipboardFixture::cleanup()
{
    panel.reset();
    QVERIFY(QDir(in("working directory")).isEmpty());
    QDir::setCurrent(QStringLiteral("/"));
}

bool FileClipboardFixture::canPaste() const
{
    for (const QAction *action : panel->parts.list->findChildren<QAction *>()) {
        if (action->text() == QLatin1String("Paste"))
            return action->isEnabled();
    }
    return false;
}

void FileClipboardFixture::fill(const QByteArray &content)
{
    writeFile(in("from/report.cdp"), content);
    copy(in("from/report.cdp"));
    QVERIFY(canPaste());
}

} // namespace TestSupport
