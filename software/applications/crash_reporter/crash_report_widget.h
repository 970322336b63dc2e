#pragma once

#include "vireling/widgets/translatable_widget.h"
#include "vireling/window/dialog.h"

class QBoxLayout;
class QDateTime;
class QGridLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace Tessel {
struct SharedClientInfo;
}

/**
 * The screen the operator works with after a crash: says what happened, when and on
 * which device, takes comments, shows the countdown. It decides nothing; its signals
 * ask the application to act.
 */
class CrashReportWidget : public Vireling::TranslatableWidget<Vireling::Dialog, Ui::NoForm>
{
    Q_OBJECT

public:
    explicit CrashReportWidget(QWidget *parent = nullptr);

    /** In the appliance's locale; a null time shows as nothing. */
    void setDateTime(const QDateTime &dateTime);
    /** Serial number, device type and version; null shows all three as nothing. */
    void setClientInfo(const Tessel::SharedClientInfo *info);
    /** The seconds until the restart; 0 hides the whole line. */
    void setCountdown(int seconds);

    /** What the operator typed, line breaks included. */
    QString comments() const;

signals:
    void sendRequested();
    void saveRequested();
    void restartRequested();
    void shutdownRequested();

protected:
    /** Escape is dropped: the screen must not go away unanswered. */
    void keyPressEvent(QKeyEvent *event) override;
    /** Only the program closes the screen; what the window manager asks for is ignored. */
    void closeEvent(QCloseEvent *event) override;
    /** Return presses the button that has the focus: none is the dialog's default. */
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void retranslate() override;

private:
    QGridLayout *makeReport();
    QBoxLayout *makeButtonRow();
    void fillCountdownLine();
    void connectButtons();
    void wrapLongTexts();
    void alignValues();
    void tieCaptionsToValues();
    void describeCountdown();

    QLabel *titleLabel;
    QLabel *messageLabel;
    QLabel *instructionsLabel;
    QLabel *dateTimeCaption;
    QLabel *dateTimeValue;
    QLabel *serialCaption;
    QLabel *serialValue;
    QLabel *typeCaption;
    QLabel *typeValue;
    QLabel *versionCaption;
    QLabel *versionValue;
    QLabel *commentsCaption;
    QPlainTextEdit *commentsEdit;
    QWidget *countdownLine;
    QLabel *countdownPrefix;
    QLabel *countdownNumber;
    QLabel *countdownSuffix;
    QPushButton *emailButton;
    QPushButton *saveButton;
    QPushButton *restartButton;
    QPushButton *shutdownButton;
};
