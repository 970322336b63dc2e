#pragma once

#include "application_fixture.h"
#include "support/scratch_machine.h"
#include "unit/software/applications/common/file_dialog_parts.h"

#include "common/file_dialog.h"
#include "common/file_widget.h"
#include "common/usb_support.h"

#include <QElapsedTimer>
#include <QQueue>
#include <QVector>

#include <functional>

/*
 * What the tests of saving to a key share. The key is a node in the sandbox's scratch
 * "/dev", what is on it a scratch "/usbkey"; mounting it is faked.
 */
namespace TestSupport {

inline const QString saveTitle = QStringLiteral("Save crash report");
inline const QString errorText = QStringLiteral("There was a problem saving the crash report.");
inline const QString successText = QStringLiteral("Crash report successfully saved.");

/** A message box, as the operator saw it. */
struct SeenBox
{
    QString title;
    QString text;
    QMessageBox::Icon icon;
    QMessageBox::StandardButtons buttons;
    const QWidget *parent;
};

/**
 * Stands before the screen while a nested event loop runs: does one thing after the other
 * to the file dialog, and presses the buttons of the message boxes.
 */
class SavingOperator : public QObject
{
public:
    using Action = std::function<void(FileDialog &)>;

    SavingOperator();

    /** To be done once the dialog stands in front and lists its folder. */
    SavingOperator &atDialog(const Action &action);
    /** Types the name of the package and presses Return. */
    SavingOperator &entersName(const QString &name);
    /** For the next message box; those without an answer get Ok. */
    SavingOperator &answers(QMessageBox::StandardButton button);

    QVector<SeenBox> boxes;
    int dialogs = 0;
    /** A dialog that nothing was left to be done to, which was then closed. */
    bool wasStuck = false;

private:
    void look();
    void answer(QMessageBox &box);
    void turnTo(FileDialog &dialog);

    QTimer timer;
    QElapsedTimer sinceAction;
    QQueue<Action> actions;
    QQueue<QMessageBox::StandardButton> buttons;
    QPointer<FileDialog> seenDialog;
    bool actionIsDue = false;
};

/** A key in the machine, with a partition, and empty. While it lives; make it first. */
class PluggedKey
{
public:
    PluggedKey();
    ~PluggedKey();
    Q_DISABLE_COPY(PluggedKey)
};

/** The crash screen comes up, and is what the operator works with. */
void launchInFront(const RunningReporter &reporter);

/** The files and folders on the key, sorted. */
QStringList filesOnKey();
int mounts();

} // namespace TestSupport
