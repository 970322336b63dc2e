#include "vireling/window/dialog.h"

namespace Vireling {

Dialog::Dialog(QWidget *parent, Qt::WindowFlags flags)
    : WindowProxy<QDialog>(parent, flags)
{}

Dialog::~Dialog() = default;

} // namespace Vireling
