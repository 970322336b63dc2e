#pragma once

#include "vireling/window/window_proxy.h"

#include <QDialog>

namespace Vireling {

/** A QDialog in the toolkit's own window frame. */
class Dialog : public WindowProxy<QDialog>
{
    Q_OBJECT

public:
    explicit Dialog(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~Dialog() override;
};

} // namespace Vireling
