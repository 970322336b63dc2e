#pragma once

#include "vireling/style/style.h"

#include <QPainter>
#include <QSize>
#include <QStyleOption>
#include <QtGlobal>

#include <vector>

/** One cell of a strip: a style, a place and the state to draw in. */
struct GoldenCell
{
    const Vireling::Style &style;
    QPainter &painter;
    QRect rect;
    QStyle::State state;
    QPalette palette;

    /** An option of the given class, set up for this cell. */
    template <typename Option>
    Option option() const
    {
        Option result;
        result.rect = rect;
        result.state = state;
        result.palette = palette;
        result.direction = Qt::LeftToRight;
        result.fontMetrics = painter.fontMetrics();
        return result;
    }
};

/** A control as the reference images show it: once for each state of the series. */
struct GoldenControl
{
    const char *name;
    QSize size;
    void (*draw)(const GoldenCell &cell);
};

/** Buttons, indicators, text fields and what is composed of them. */
std::vector<GoldenControl> goldenFields();
/** Sliders, bars and tabs. */
std::vector<GoldenControl> goldenRanges();
/** Menus, items, headers. */
std::vector<GoldenControl> goldenViews();
/** Frames, bars, docks, sub-windows. */
std::vector<GoldenControl> goldenContainers();
