#pragma once

#include <QList>
#include <QMetaType>

class CrashReportWidget;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QWidget;

namespace TestSupport {

/** The parts of a crash report screen, found where they have to stand; null where not. */
struct ScreenParts
{
    explicit ScreenParts(const CrashReportWidget &screen);

    /** Everything that shows a translated text, in the order of expectedTexts(). */
    QList<QWidget *> translated() const;

    QGridLayout *grid = nullptr;
    QHBoxLayout *row = nullptr;
    QLabel *title = nullptr;
    QLabel *message = nullptr;
    QLabel *instructions = nullptr;
    QList<QLabel *> captions; // of the five rows of facts, comments last
    QList<QLabel *> values;   // of the four rows before the comments
    QPlainTextEdit *comments = nullptr;
    QWidget *countdown = nullptr;
    QLabel *prefix = nullptr;
    QLabel *number = nullptr;
    QLabel *suffix = nullptr;
    QPushButton *email = nullptr;
    QPushButton *save = nullptr;
    QPushButton *restart = nullptr;
    QPushButton *shutdown = nullptr;
};

using LabelPart = QLabel *ScreenParts::*;
using ButtonPart = QPushButton *ScreenParts::*;

/** What the screen says in English, in the order of ScreenParts::translated(). */
QList<QString> expectedTexts();

} // namespace TestSupport

Q_DECLARE_METATYPE(TestSupport::LabelPart)
Q_DECLARE_METATYPE(TestSupport::ButtonPart)
