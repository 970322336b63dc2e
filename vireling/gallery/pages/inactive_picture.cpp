#include "vireling/gallery/pages/inactive_picture.h"

#include <QPainter>

namespace Vireling {

InactivePicture::InactivePicture(std::unique_ptr<QWidget> window, QWidget *parent)
    : QWidget(parent)
    , pictured(std::move(window))
{
    pictured->setAttribute(Qt::WA_DontShowOnScreen);
}

InactivePicture::~InactivePicture() = default;

QSize InactivePicture::sizeHint() const
{
    return pictured->sizeHint().expandedTo(pictured->minimumSize());
}

void InactivePicture::paintEvent(QPaintEvent *)
{
    pictured->resize(size());
    QPainter(this).drawPixmap(0, 0, pictured->grab());
}

} // namespace Vireling
