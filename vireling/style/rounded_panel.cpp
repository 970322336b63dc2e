#include "vireling/style/rounded_panel.h"

#include "vireling/style/kept_picture.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Vireling {

namespace {

PictureKey keyOf(PictureShape shape, const RoundedPanel &panel)
{
    return {shape, panel.fill, panel.frame, panel.frameWidth, panel.radius};
}

void drawPath(QPainter &painter, const QRectF &rect, const RoundedPanel &panel)
{
    const qreal inset = panel.frameWidth / 2;
    painter.setBrush(panel.fill.alpha() > 0 ? QBrush(panel.fill) : QBrush(Qt::NoBrush));
    painter.setPen(panel.frameWidth > 0 ? QPen(panel.frame, panel.frameWidth) : QPen(Qt::NoPen));
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), panel.radius - inset,
                            panel.radius - inset);
}

/** The side of the square that holds a corner, in logical pixels. */
int cornerSize(const RoundedPanel &panel)
{
    return int(std::ceil(std::max(panel.radius, panel.frameWidth)));
}

/** Copied from a picture of a panel that is all corners. */
void drawCorners(QPainter &painter, const QRect &rect, const RoundedPanel &panel, int ratio)
{
    const int corner = cornerSize(panel);
    const QSize size(2 * corner, 2 * corner);
    const QImage picture =
        keptPicture(keyOf(PictureShape::PanelCorners, panel), size, ratio, [&](QPainter &fresh) {
            drawPath(fresh, QRectF({0, 0}, size), panel);
        });
    const int source = corner * ratio;
    const auto draw = [&](int x, int y, int sourceX, int sourceY) {
        painter.drawImage(QRect(x, y, corner, corner), picture,
                          QRect(sourceX, sourceY, source, source));
    };
    const int right = rect.x() + rect.width() - corner;
    const int bottom = rect.y() + rect.height() - corner;
    draw(rect.x(), rect.y(), 0, 0);
    draw(right, rect.y(), source, 0);
    draw(rect.x(), bottom, 0, source);
    draw(right, bottom, source, source);
}

/** The frame between the corners. */
void drawSides(QPainter &painter, const QRect &rect, const RoundedPanel &panel)
{
    const int width = int(panel.frameWidth);
    if (width == 0)
        return;
    const int corner = cornerSize(panel);
    const int across = rect.width() - 2 * corner;
    const int down = rect.height() - 2 * corner;
    painter.fillRect(rect.x() + corner, rect.y(), across, width, panel.frame);
    painter.fillRect(rect.x() + corner, rect.y() + rect.height() - width, across, width,
                     panel.frame);
    painter.fillRect(rect.x(), rect.y() + corner, width, down, panel.frame);
    painter.fillRect(rect.x() + rect.width() - width, rect.y() + corner, width, down, panel.frame);
}

/** The surface within the frame, without the corners. */
void fillWithin(QPainter &painter, const QRect &rect, const RoundedPanel &panel)
{
    if (panel.fill.alpha() == 0)
        return;
    const int width = int(panel.frameWidth);
    const int corner = cornerSize(panel);
    const int across = rect.width() - 2 * corner;
    painter.fillRect(rect.x() + corner, rect.y() + width, across, corner - width, panel.fill);
    painter.fillRect(rect.x() + width, rect.y() + corner, rect.width() - 2 * width,
                     rect.height() - 2 * corner, panel.fill);
    painter.fillRect(rect.x() + corner, rect.y() + rect.height() - corner, across, corner - width,
                     panel.fill);
}

/**
 * Whether corners and straight pieces between them make up the panel. Not where the
 * surface shows through the frame: as one path it reaches to the frame's middle.
 */
bool isMadeOfPieces(const QRectF &rect, const RoundedPanel &panel)
{
    const bool hidesEdge =
        panel.frameWidth == 0 || panel.frame.alpha() == 255 || panel.fill.alpha() == 0;
    const int corners = 2 * cornerSize(panel);
    return hidesEdge && panel.frameWidth == std::floor(panel.frameWidth) &&
           rect.width() >= corners && rect.height() >= corners;
}

} // namespace

void drawRoundedPanel(QPainter &painter, const QRectF &rect, const RoundedPanel &panel)
{
    const int ratio = isMadeOfPieces(rect, panel) ? exactPictureRatio(painter, rect) : 0;
    if (ratio > 0) {
        const QRect whole = rect.toRect();
        drawCorners(painter, whole, panel, ratio);
        drawSides(painter, whole, panel);
        fillWithin(painter, whole, panel);
        return;
    }
    drawKept(painter, rect, keyOf(PictureShape::Panel, panel), [&](QPainter &fresh) {
        drawPath(fresh, QRectF({0, 0}, rect.size()), panel);
    });
}

} // namespace Vireling
