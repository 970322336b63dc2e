#include "save_fixture.h"

#include <QDir>

namespace TestSupport {

namespace {

constexpr qint64 patience = 10000;

} // namespace

SavingOperator::SavingOperator()
{
    connect(&timer, &QTimer::timeout, this, &SavingOperator::look);
    timer.start(0);
}

SavingOperator &SavingOperator::atDialog(const Action &action)
{
    actions.enqueue(action);
    return *this;
}

SavingOperator &SavingOperator::entersName(const QString &name)
{
    return atDialog([name](FileDialog &dialog) {
        QLineEdit *line = FileDialogParts(dialog).name;
        line->clear();
        QTest::keyClicks(line, name);
        QTest::keyClick(line, Qt::Key_Return);
    });
}

SavingOperator &SavingOperator::answers(QMessageBox::StandardButton button)
{
    buttons.enqueue(button);
    return *this;
}

void SavingOperator::look()
{
    QWidget *front = QApplication::activeModalWidget();
    if (auto *box = qobject_cast<QMessageBox *>(front))
        answer(*box);
    else if (auto *dialog = qobject_cast<FileDialog *>(front))
        turnTo(*dialog);
}

void SavingOperator::answer(QMessageBox &box)
{
    boxes.append(
        {box.windowTitle(), box.text(), box.icon(), box.standardButtons(), box.parentWidget()});
    box.button(buttons.isEmpty() ? QMessageBox::Ok : buttons.dequeue())->click();
}

/** The action runs on its own, so that this goes on while it waits for a question. */
void SavingOperator::turnTo(FileDialog &dialog)
{
    if (seenDialog != &dialog) {
        seenDialog = &dialog;
        ++dialogs;
        sinceAction.start();
    }
    if (!actions.isEmpty() && !actionIsDue) {
        actionIsDue = true;
        const Action action = actions.dequeue();
        QMetaObject::invokeMethod(
            &dialog,
            [this, action, &dialog] {
                actionIsDue = false;
                sinceAction.start();
                action(dialog);
            },
            Qt::QueuedConnection);
    } else if (sinceAction.hasExpired(patience)) {
        wasStuck = true;
        dialog.close();
    }
}

PluggedKey::PluggedKey()
{
    addDiskFolder(QStringLiteral("sdb"));
    addNode(QStringLiteral("sdb"));
    addNode(QStringLiteral("sdb1"));
}

PluggedKey::~PluggedKey()
{
    removeAllDisks();
    emptyFolder(keyFolder);
}

void launchInFront(const RunningReporter &reporter)
{
    reporter.launch();
    QWidget *screen = reporter.crashScreen();
    screen->activateWindow();
    if (!QTest::qWaitFor([screen] { return QApplication::activeWindow() == screen; }))
        qFatal("no crash screen in front");
}

QStringList filesOnKey()
{
    return QDir(keyFolder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
}

int mounts()
{
    return int(KernelFakes::instance().calls(KernelFunction::Mount).size());
}

} // namespace TestSupport
