#pragma once

#include "vireling/window/dialog.h"

#include <QSize>

class FileWidget;

/**
 * The file panel as a modal dialog. It adds no rules: the panel's confirm() accepts it and
 * its cancel() rejects it. The caller sets the panel up before exec() and reads the path
 * afterwards; a mounted key is then the caller's to unmount.
 */
class FileDialog : public Vireling::Dialog
{
    Q_OBJECT

public:
    explicit FileDialog(QWidget *parent = nullptr);

    /** Owned by the dialog; never null. */
    FileWidget *fileWidget() const;

    /** Around the panel as large as its form is drawn; how it comes up, if the screen has room. */
    QSize sizeHint() const override;

private:
    FileWidget *panel;
    const QSize formSize; ///< in pixels at 96 dpi
};
