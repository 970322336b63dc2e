#pragma once

#include "vireling/window/dialog.h"

class QLabel;
class QProgressBar;

/**
 * Tells how far a package is. Modal, and the operator cannot close it: a package is
 * finished or fails by itself.
 */
class ProgressWindow : public Vireling::Dialog
{
    Q_OBJECT

public:
    explicit ProgressWindow(QWidget *parent);

    /** Bytes; more done than there are in all counts as all. */
    void setProgress(quint64 done, quint64 inAll);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QLabel *amount;
    QProgressBar *bar;
};
