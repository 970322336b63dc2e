#pragma once

#include "vireling/window/window_proxy.h"

#include <QList>
#include <QPointer>
#include <QWizard>

class QAbstractButton;

namespace Vireling {

/**
 * A QWizard in the toolkit's own window frame. Its pages and its row of buttons lie
 * below the title bar, and the buttons of that row are all equally wide.
 */
class Wizard : public WindowProxy<QWizard>
{
    Q_OBJECT

public:
    explicit Wizard(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~Wizard() override;

    /** The buttons that QWizard made for its row, the hidden ones too; not those of the pages. */
    QList<QAbstractButton *> wizardButtons() const;

protected:
    bool event(QEvent *event) override;

private:
    void insetContents();
    void retranslateButtons();
    void equaliseButtons();

    QPointer<QWidget> contents; // QWizard's own, around pages and buttons
};

} // namespace Vireling
