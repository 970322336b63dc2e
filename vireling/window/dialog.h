#pragma once

#include "vireling/window/window_proxy.h"

#include <QDialog>

namespace Vireling {

/**
 * A QDialog in the toolkit's own window frame. Shown where nobody has moved it, it comes up
 * in the middle of its parent's window, or of the screen when it has no parent.
 */
class Dialog : public WindowProxy<QDialog>
{
    Q_OBJECT

public:
    explicit Dialog(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~Dialog() override;

    void setVisible(bool visible) override;

private:
    void centre();
};

} // namespace Vireling
