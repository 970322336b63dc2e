#include "common/file_dialog.h"

#include "common/file_widget.h"

#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr int formDpi = 96;

} // namespace

FileDialog::FileDialog(QWidget *parent)
    : Vireling::Dialog(parent)
    , panel(new FileWidget(this))
    , formSize(panel->size())
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(panel);
    connect(panel, &FileWidget::confirm, this, &FileDialog::accept);
    connect(panel, &FileWidget::cancel, this, &FileDialog::reject);
    // Left to itself a dialog takes no more than two thirds of the screen: on the smallest
    // one a list of three rows.
    resize(FileDialog::sizeHint().boundedTo(screen()->availableSize()));
}

FileWidget *FileDialog::fileWidget() const
{
    return panel;
}

QSize FileDialog::sizeHint() const
{
    const QSize smallest = Dialog::sizeHint();
    const QSize aroundPanel = smallest - panel->sizeHint();
    const QSize form(formSize.width() * logicalDpiX() / formDpi,
                     formSize.height() * logicalDpiY() / formDpi);
    return smallest.expandedTo(aroundPanel + form);
}
