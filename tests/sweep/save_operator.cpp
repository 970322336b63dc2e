/*
 * An operator inside the shipped program, for scripts/sweep: loaded with LD_PRELOAD, it
 * presses what an operator presses, in a program that has no screen. Hundreds of runs with
 * a real screen, keyboard and window manager would take hours.
 *
 * He saves the report to the key as "report", answers every question with No and every
 * message with its button, tries to save once, and restarts. What he reads goes to standard
 * error: "operator reads: TITLE: TEXT".
 */
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int patienceMilliseconds = 5;

class Operator : public QObject
{
public:
    Operator()
    {
        connect(&timer, &QTimer::timeout, this, &Operator::look);
        timer.start(patienceMilliseconds);
    }

private:
    void look();
    void answer(QMessageBox &box);
    static void nameFile(const QDialog &dialog);
    static QWidget *screen();
    static void press(QAbstractButton *button);
    static QAbstractButton *find(const QWidget &window, const QString &text);

    QTimer timer;
    QPointer<QWidget> attended; // one press a window
    bool saved = false;
    bool told = false; // what became of it
};

QWidget *Operator::screen()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (window->isVisible() && window->windowTitle() == QLatin1String("R4 Error Reporter"))
            return window;
    return nullptr;
}

QAbstractButton *Operator::find(const QWidget &window, const QString &text)
{
    const QList<QPushButton *> buttons = window.findChildren<QPushButton *>();
    for (QPushButton *button : buttons)
        if (button->isVisible() && button->text().remove('&') == text)
            return button;
    return nullptr;
}

/** Later, as a dialog that it opens would hold up the timer it is called from. */
void Operator::press(QAbstractButton *button)
{
    if (button)
        QMetaObject::invokeMethod(button, &QAbstractButton::click, Qt::QueuedConnection);
}

void Operator::answer(QMessageBox &box)
{
    std::fprintf(stderr, "operator reads: %s: %s\n", qPrintable(box.windowTitle()),
                 qPrintable(box.text()));
    QAbstractButton *no = box.button(QMessageBox::No);
    told = told || !no;
    press(no ? no : box.button(QMessageBox::Ok));
}

void Operator::nameFile(const QDialog &dialog)
{
    auto *line = dialog.findChild<QLineEdit *>(QStringLiteral("configurationNameLineEdit"));
    auto *accept = dialog.findChild<QPushButton *>(QStringLiteral("okButton"));
    if (!line || !accept)
        return;
    line->setText(QStringLiteral("report"));
    press(accept);
}

/** Called again and again, also while a message waits: dialogs turn loops of their own. */
void Operator::look()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (modal && modal != attended) {
        attended = modal;
        if (auto *box = qobject_cast<QMessageBox *>(modal))
            answer(*box);
        else if (auto *dialog = qobject_cast<QDialog *>(modal))
            nameFile(*dialog);
    }
    QWidget *window = screen();
    // A dialog that was just closed has not led to anything yet.
    if (modal || !window || (saved && !told))
        return;
    press(find(*window, saved ? QStringLiteral("Restart") : QStringLiteral("Save")));
    saved = true;
}

void employ()
{
    new Operator; // as long as the program
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(employ)
