#pragma once

#include "file_dialog_parts.h"

#include "common/file_widget.h"
#include "support/kernel_fakes.h"
#include "support/log_capture.h"

#include <QFileSystemModel>
#include <QLabel>
#include <QMessageBox>
#include <QSignalSpy>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

/*
 * What the tests of the file panel share. They run in the sandbox: "/usbkey", "/user_data"
 * and "/dev" are scratch, and what mounts and unmounts is faked.
 */
namespace TestSupport {

inline const QString internalFolder = QStringLiteral("/user_data");

/** Once for a test program: its icons, and proof that it is in the sandbox. */
void prepareScratchMachine();
/** Before each test: no key, no files, no kernel calls. */
void emptyScratchMachine();

/** The partition of a key appears; true once USBSupport has told of it. */
bool plugKey();
/** A removal that USBSupport believes, as when the node is slow to go. */
void announceRemoval();

void writeFile(const QString &path, const QByteArray &content = "x");
void makeFolders(const QStringList &paths);

int mountCalls();
int unmountCalls();
/** The next call of that function fails. */
void refuseNext(KernelFunction function);

/** The panel by itself, with the controls an operator finds in it. */
class PanelUnderTest
{
public:
    PanelUnderTest();
    /** One whose internal root is internalFolder, and which is there. */
    static std::unique_ptr<PanelUnderTest> atInternalStorage();

    /** Waits until the list shows exactly these names, in this order. */
    bool lists(const QStringList &names) const;
    /** As above for the combo box: "Internal Storage", "| folder", "| | below it", ... */
    bool offers(const QStringList &entries) const;
    QStringList entries() const;
    QStringList names() const;
    /** The path of the entry shown in the combo box; "(none)" without one. */
    QString currentEntry() const;
    QString shownFolder() const;
    QFileSystemModel *model() const;
    QModelIndex index(const QString &path) const { return model()->index(path); }

    /** Picks the entry with that text. */
    void choose(const QString &text);
    /** Double click or Return, as the list reports it. */
    void activate(const QString &path);

    // Before the panel, so that what it says while it goes is kept off the terminal.
    LogCapture log;
    FileWidget widget;
    FileDialogParts parts;
    QToolButton *parentFolder;
    QToolButton *newFolder;
    QSignalSpy confirmed;
    QSignalSpy cancelled;
};

/**
 * Answers every message box with one button, or with Ok where that is missing, and
 * remembers them all. What happens while a box is open comes first.
 */
class MessageBoxes : public QObject
{
public:
    struct Box
    {
        QString title;
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons buttons;
        QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
        QWidget *parent = nullptr;
        Qt::TextFormat format = Qt::AutoText;
    };

    explicit MessageBoxes(QMessageBox::StandardButton answer,
                          std::function<void()> meanwhile = nullptr);

    /** How many there were; the first and the last of them. */
    int count() const { return static_cast<int>(seen.size()); }
    Box first() const { return seen.empty() ? Box() : seen.front(); }
    Box last() const { return seen.empty() ? Box() : seen.back(); }

private:
    void look();

    const QMessageBox::StandardButton answer;
    const std::function<void()> meanwhile;
    QTimer timer;
    std::vector<Box> seen;
};

} // namespace TestSupport
