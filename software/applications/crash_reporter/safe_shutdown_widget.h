#pragma once

#include <QWidget>

class QLabel;

/**
 * The full-screen backdrop of the program and its last screen: a dark gradient with
 * two logos, and, once revealed, the message that the appliance may be switched off.
 * Software never powers the appliance off: with the message shown this is the end.
 *
 * It has no translation context of its own: its text is found under "QWidget".
 */
class SafeShutdownWidget : public QWidget
{
public:
    explicit SafeShutdownWidget(QWidget *parent = nullptr);

    /** The model that the message names; an empty one leaves its place empty. */
    void setDeviceName(const QString &name);
    /** Hidden at first. The place of the message is kept: the logos never move. */
    void setMessageVisible(bool visible);

protected:
    /** What the window manager asks for is ignored: behind this screen there is nothing. */
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QLabel *messageLabel; // owned: a child
};
