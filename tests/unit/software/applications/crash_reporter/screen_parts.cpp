#include "screen_parts.h"

#include "crash_reporter/crash_report_widget.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace TestSupport {

namespace {

template <typename Widget>
Widget *at(const QLayout *layout, int index)
{
    QLayoutItem *item = layout ? layout->itemAt(index) : nullptr;
    return item ? qobject_cast<Widget *>(item->widget()) : nullptr;
}

template <typename Widget>
Widget *at(const QGridLayout *grid, int row, int column)
{
    QLayoutItem *item = grid ? grid->itemAtPosition(row, column) : nullptr;
    return item ? qobject_cast<Widget *>(item->widget()) : nullptr;
}

template <typename Layout>
Layout *inner(const QLayout *layout, int index)
{
    QLayoutItem *item = layout ? layout->itemAt(index) : nullptr;
    return item ? qobject_cast<Layout *>(item->layout()) : nullptr;
}

} // namespace

ScreenParts::ScreenParts(const CrashReportWidget &screen)
    : grid(inner<QGridLayout>(screen.layout(), 0))
    , row(inner<QHBoxLayout>(screen.layout(), 1))
    , title(at<QLabel>(grid, 0, 1))
    , message(at<QLabel>(grid, 1, 1))
    , instructions(at<QLabel>(grid, 2, 1))
    , comments(at<QPlainTextEdit>(grid, 7, 2))
    , countdown(at<QWidget>(row, 0))
    , email(at<QPushButton>(row, 2))
    , save(at<QPushButton>(row, 3))
    , restart(at<QPushButton>(row, 4))
    , shutdown(at<QPushButton>(row, 5))
{
    for (int fact = 3; fact <= 7; ++fact)
        captions << at<QLabel>(grid, fact, 1);
    for (int fact = 3; fact <= 6; ++fact)
        values << at<QLabel>(grid, fact, 2);
    if (!countdown)
        return;
    prefix = at<QLabel>(countdown->layout(), 0);
    number = at<QLabel>(countdown->layout(), 1);
    suffix = at<QLabel>(countdown->layout(), 2);
}

QList<QWidget *> ScreenParts::translated() const
{
    QList<QWidget *> all{title, message, instructions};
    for (QLabel *caption : captions)
        all << caption;
    return all << prefix << suffix << email << save << restart << shutdown;
}

QList<QString> expectedTexts()
{
    return {
        QStringLiteral("Sorry, something went wrong..."),
        QStringLiteral(
            "An error has occurred and the System Processor application needs to restart."),
        QStringLiteral("A crash report has been created, which you can save to a USB disk.  "
                       "Please email the crash report file to the Tovask service department "
                       "(support@tovask.example)."),
        QStringLiteral("Date & Time:"),
        QStringLiteral("Serial Number:"),
        QStringLiteral("Type:"),
        QStringLiteral("Version:"),
        QStringLiteral("Comments:"),
        QStringLiteral("Restarting automatically in"),
        QStringLiteral("seconds."),
        QStringLiteral("Email"),
        QStringLiteral("Save"),
        QStringLiteral("Restart"),
        QStringLiteral("Shutdown"),
    };
}

} // namespace TestSupport
