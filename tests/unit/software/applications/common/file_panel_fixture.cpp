#include "file_panel_fixture.h"

#include "support/scratch_machine.h"

#include "common/usb_support.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTest>

#include <cerrno>
#include <utility>

namespace TestSupport {

void prepareScratchMachine()
{
    if (!onScratchMachine())
        qFatal("this test writes into /usbkey: run it in the sandbox");
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
}

void emptyScratchMachine()
{
    USBSupport::destroyInstance();
    KernelFakes::instance().reset();
    removeAllDisks();
    emptyFolder(keyFolder);
    emptyFolder(internalFolder);
}

bool plugKey()
{
    USBSupport *usb = USBSupport::instance();
    addDiskFolder(QStringLiteral("sdb"));
    addNode(QStringLiteral("sdb1"));
    return QTest::qWaitFor([usb] { return usb->isUsbKeyPresent(); });
}

void announceRemoval()
{
    DeviceNotificationEvent removal(QStringLiteral("sdb1"), false);
    QCoreApplication::sendEvent(USBSupport::instance(), &removal);
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

void makeFolders(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (!QDir().mkpath(path))
            qFatal("cannot make %s", qPrintable(path));
    }
}

int mountCalls()
{
    return int(KernelFakes::instance().calls(KernelFunction::Mount).size());
}

int unmountCalls()
{
    return int(KernelFakes::instance().calls(KernelFunction::Unmount).size());
}

void refuseNext(KernelFunction function)
{
    KernelOutcome refusal;
    refusal.result = -1;
    refusal.error = EIO;
    KernelFakes::instance().script(function, refusal);
}

PanelUnderTest::PanelUnderTest()
    : parts(widget)
    , parentFolder(widget.findChild<QToolButton *>(QStringLiteral("parentFolderButton")))
    , newFolder(widget.findChild<QToolButton *>(QStringLiteral("newFolderButton")))
    , confirmed(&widget, &FileWidget::confirm)
    , cancelled(&widget, &FileWidget::cancel)
{}

std::unique_ptr<PanelUnderTest> PanelUnderTest::atInternalStorage()
{
    auto panel = std::make_unique<PanelUnderTest>();
    panel->widget.setInternalStoragePath(internalFolder);
    return panel;
}

bool PanelUnderTest::lists(const QStringList &expected) const
{
    const bool agrees = QTest::qWaitFor([&] { return names() == expected; });
    if (!agrees)
        qWarning() << "listed" << names() << "not" << expected;
    return agrees;
}

bool PanelUnderTest::offers(const QStringList &expected) const
{
    const bool agrees = QTest::qWaitFor([&] { return entries() == expected; });
    if (!agrees)
        qWarning() << "offered" << entries() << "not" << expected;
    return agrees;
}

QStringList PanelUnderTest::entries() const
{
    QStringList texts;
    for (int entry = 0; entry < parts.location->count(); ++entry) {
        const QVariantList data = parts.location->itemData(entry).toList();
        const int level = data.size() > 1 ? data.last().toInt() : 0;
        texts << QStringLiteral("| ").repeated(level) + parts.location->itemText(entry);
    }
    return texts;
}

QStringList PanelUnderTest::names() const
{
    QStringList texts;
    const QModelIndex root = parts.list->rootIndex();
    for (int row = 0; row < model()->rowCount(root); ++row) {
        if (!parts.list->isRowHidden(row))
            texts << model()->index(row, 0, root).data().toString();
    }
    return texts;
}

QString PanelUnderTest::currentEntry() const
{
    if (parts.location->currentIndex() < 0)
        return QStringLiteral("(none)");
    return parts.location->currentData().toList().value(0).toString();
}

QString PanelUnderTest::shownFolder() const
{
    return model()->filePath(parts.list->rootIndex());
}

QFileSystemModel *PanelUnderTest::model() const
{
    return qobject_cast<QFileSystemModel *>(parts.list->model());
}

void PanelUnderTest::choose(const QString &text)
{
    const int entry = parts.location->findText(text);
    parts.location->setCurrentIndex(entry);
    emit parts.location->activated(entry);
}

void PanelUnderTest::activate(const QString &path)
{
    emit parts.list->activated(index(path));
}

MessageBoxes::MessageBoxes(QMessageBox::StandardButton button, std::function<void()> action)
    : answer(button)
    , meanwhile(std::move(action))
{
    connect(&timer, &QTimer::timeout, this, &MessageBoxes::look);
    timer.start(0);
}

void MessageBoxes::look()
{
    const QPointer<QMessageBox> box =
        qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box)
        return;
    seen.push_back({box->windowTitle(), box->text(), box->icon(), box->standardButtons(),
                    box->standardButton(box->defaultButton()), box->parentWidget(),
                    box->textFormat()});
    if (meanwhile)
        meanwhile();
    if (box)
        box->button(box->button(answer) ? answer : QMessageBox::Ok)->click();
}

} // namespace TestSupport
