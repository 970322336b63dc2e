// What a crash screen costs in plain Qt Widgets: a dialog with as many labels and
// buttons, without a style of its own.

#include <QApplication>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

constexpr int labels = 15;
constexpr int buttons = 4;

} // namespace

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    QDialog dialog;
    auto *grid = new QGridLayout(&dialog);
    for (int number = 0; number < labels; ++number)
        grid->addWidget(new QLabel(QStringLiteral("Label %1").arg(number)), number, 0, 1, buttons);
    grid->addWidget(new QPlainTextEdit, labels, 0, 1, buttons);
    for (int number = 0; number < buttons; ++number)
        grid->addWidget(new QPushButton(QStringLiteral("Button %1").arg(number)), labels + 1,
                        number);
    dialog.setWindowTitle(QStringLiteral("R4 Error Reporter"));
    dialog.show();
    return QApplication::exec();
}
