#include "vireling/window/wizard.h"
namespace Vireling {
Wizard::Wizard(QWidget *parent, Qt::WindowFlags flags)
    : WindowProxy<QWizard>(parent, flags)
{}
Wizard::~Wizard() = default;
} // namespace Vireling
