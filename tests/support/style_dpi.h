#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPaintDevice>
#include <QtMath>

namespace TestSupport {

/**
 * The measures of a font on a device of so many dots per inch: how a style option
 * carries a density that no screen of the test has.
 */
inline QFontMetrics fontMetricsAt(int dotsPerInch, const QFont &font = QFont())
{
    constexpr qreal inchesPerMetre = 1 / 0.0254;
    QImage device(1, 1, QImage::Format_ARGB32_Premultiplied);
    device.setDotsPerMeterX(qRound(dotsPerInch * inchesPerMetre));
    device.setDotsPerMeterY(qRound(dotsPerInch * inchesPerMetre));
    return QFontMetrics(font, &device);
}

} // namespace TestSupport
