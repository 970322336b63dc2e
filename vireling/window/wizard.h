#pragma once

#include "vireling/window/window_proxy.h"

#include <QWizard>

namespace Vireling {

/** A QWizard in the toolkit's own window frame. */
class Wizard : public WindowProxy<QWizard>
{
    Q_OBJECT

public:
    explicit Wizard(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~Wizard() override;
};

} // namespace Vireling
