#pragma once

#include "style_pictures.h"

#include <QStyle>
#include <QStyleOption>
#include <QtTest>

/** A range widget that lets out the option it paints itself with. */
template <typename Widget>
struct Open : Widget
{
    using Widget::Widget;

    QStyleOptionSlider option() const
    {
        QStyleOptionSlider option;
        this->initStyleOption(&option);
        return option;
    }
    QRect part(QStyle::ComplexControl control, QStyle::SubControl part) const
    {
        const QStyleOptionSlider filled = option();
        return this->style()->subControlRect(control, &filled, part, this);
    }
};

inline QImage paintedControl(QStyle::ComplexControl control, const QStyleOptionComplex &option)
{
    return painted(option.rect.size(), [&](QPainter &painter) {
        QApplication::style()->drawComplexControl(control, &option, &painter);
    });
}

inline int along(Qt::Orientation orientation, const QPoint &point)
{
    return orientation == Qt::Horizontal ? point.x() : point.y();
}

inline int length(Qt::Orientation orientation, const QRect &rect)
{
    return orientation == Qt::Horizontal ? rect.width() : rect.height();
}

inline QPoint moved(Qt::Orientation orientation, const QPoint &from, int pixels)
{
    return from + (orientation == Qt::Horizontal ? QPoint(pixels, 0) : QPoint(0, pixels));
}

/** Brings `range`, 214 by 20 pixels, into the directions of the row of addDirections(). */
template <typename Range>
void lie(Range &range)
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, inverted);
    QFETCH(bool, rightToLeft);
    range.setOrientation(orientation);
    range.setInvertedAppearance(inverted);
    range.setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    range.resize(orientation == Qt::Horizontal ? QSize(214, 20) : QSize(20, 214));
}

/** The rows of a test over all ways a range can lie. */
inline void addDirections()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<bool>("rightToLeft");
    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical})
        for (const bool inverted : {false, true})
            for (const bool rightToLeft : {false, true})
                QTest::addRow("%s%s%s", orientation == Qt::Horizontal ? "horizontal" : "vertical",
                              inverted ? ", inverted" : "", rightToLeft ? ", right to left" : "")
                    << orientation << inverted << rightToLeft;
}

/**
 * Whether the range's minimum is at the right or the bottom end, with the directions of
 * addDirections(); upright sliders rise from the bottom, upright scroll bars from the top.
 */
inline bool startsAtEnd(bool uprightFromBottom)
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, inverted);
    QFETCH(bool, rightToLeft);
    const bool mirrored = orientation == Qt::Horizontal ? rightToLeft : uprightFromBottom;
    return mirrored != inverted;
}
