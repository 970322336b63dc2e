#include "golden_control.h"

#include <QProgressBar>
#include <QSlider>

namespace {

QStyleOptionSlider range(const GoldenCell &cell, Qt::Orientation orientation)
{
    auto option = cell.option<QStyleOptionSlider>();
    option.orientation = orientation;
    option.maximum = 100;
    option.sliderPosition = 30;
    option.sliderValue = 30;
    option.pageStep = 20;
    option.singleStep = 1;
    option.subControls = QStyle::SC_All;
    if (orientation == Qt::Horizontal)
        option.state |= QStyle::State_Horizontal;
    return option;
}

QStyleOptionSlider slider(const GoldenCell &cell, Qt::Orientation orientation)
{
    auto option = range(cell, orientation);
    option.tickPosition = QSlider::TicksBothSides;
    option.tickInterval = 20;
    if (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken))
        option.activeSubControls = QStyle::SC_SliderHandle;
    return option;
}

void horizontalSlider(const GoldenCell &cell)
{
    const auto option = slider(cell, Qt::Horizontal);
    cell.style.drawComplexControl(QStyle::CC_Slider, &option, &cell.painter);
}

void verticalSlider(const GoldenCell &cell)
{
    auto option = slider(cell, Qt::Vertical);
    option.upsideDown = true;
    cell.style.drawComplexControl(QStyle::CC_Slider, &option, &cell.painter);
}

void dial(const GoldenCell &cell)
{
    auto option = range(cell, Qt::Vertical);
    option.upsideDown = true;
    option.tickInterval = 10;
    option.notchTarget = 10;
    option.subControls = QStyle::SC_All;
    cell.style.drawComplexControl(QStyle::CC_Dial, &option, &cell.painter);
}

QStyleOptionSlider scrollBar(const GoldenCell &cell, Qt::Orientation orientation)
{
    auto option = range(cell, orientation);
    if (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken))
        option.activeSubControls = QStyle::SC_ScrollBarSlider;
    return option;
}

void horizontalScrollBar(const GoldenCell &cell)
{
    const auto option = scrollBar(cell, Qt::Horizontal);
    cell.style.drawComplexControl(QStyle::CC_ScrollBar, &option, &cell.painter);
}

void verticalScrollBar(const GoldenCell &cell)
{
    const auto option = scrollBar(cell, Qt::Vertical);
    cell.style.drawComplexControl(QStyle::CC_ScrollBar, &option, &cell.painter);
}

QStyleOptionProgressBar progress(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionProgressBar>();
    option.state |= QStyle::State_Horizontal;
    option.maximum = 100;
    option.progress = 45;
    option.text = QStringLiteral("45%");
    option.textVisible = true;
    option.textAlignment = Qt::AlignCenter;
    return option;
}

void progressBar(const GoldenCell &cell)
{
    const auto option = progress(cell);
    cell.style.drawControl(QStyle::CE_ProgressBar, &option, &cell.painter);
}

void fullProgressBar(const GoldenCell &cell)
{
    auto option = progress(cell);
    option.progress = option.maximum;
    option.text = QStringLiteral("100%");
    cell.style.drawControl(QStyle::CE_ProgressBar, &option, &cell.painter);
}

/** Two tabs, the second selected where the series has "checked"; else the first. */
void tabs(const GoldenCell &cell, QTabBar::Shape shape)
{
    const bool upright = shape == QTabBar::RoundedWest || shape == QTabBar::RoundedEast;
    const bool secondSelected = cell.state & QStyle::State_On;
    for (int number = 0; number < 2; ++number) {
        auto option = cell.option<QStyleOptionTab>();
        const int half = (upright ? cell.rect.height() : cell.rect.width()) / 2;
        if (upright)
            option.rect = {cell.rect.x(), cell.rect.y() + number * half, cell.rect.width(), half};
        else
            option.rect = {cell.rect.x() + number * half, cell.rect.y(), half, cell.rect.height()};
        option.shape = shape;
        option.text = number == 0 ? QStringLiteral("One") : QStringLiteral("Two");
        option.position = number == 0 ? QStyleOptionTab::Beginning : QStyleOptionTab::End;
        const bool selected = (number == 1) == secondSelected;
        option.state.setFlag(QStyle::State_On, false);
        option.state.setFlag(QStyle::State_Selected, selected);
        if (!selected)
            option.state.setFlag(QStyle::State_HasFocus, false);
        option.selectedPosition = selected      ? QStyleOptionTab::NotAdjacent
                                  : number == 0 ? QStyleOptionTab::NextIsSelected
                                                : QStyleOptionTab::PreviousIsSelected;
        cell.style.drawControl(QStyle::CE_TabBarTab, &option, &cell.painter);
    }
}

void northTabs(const GoldenCell &cell)
{
    tabs(cell, QTabBar::RoundedNorth);
}

void southTabs(const GoldenCell &cell)
{
    tabs(cell, QTabBar::RoundedSouth);
}

void westTabs(const GoldenCell &cell)
{
    tabs(cell, QTabBar::RoundedWest);
}

void eastTabs(const GoldenCell &cell)
{
    tabs(cell, QTabBar::RoundedEast);
}

} // namespace

std::vector<GoldenControl> goldenRanges()
{
    return {
        {"slider_horizontal", {120, 30}, horizontalSlider},
        {"slider_vertical", {30, 120}, verticalSlider},
        {"dial", {64, 64}, dial},
        {"scroll_bar_horizontal", {120, 20}, horizontalScrollBar},
        {"scroll_bar_vertical", {20, 120}, verticalScrollBar},
        {"progress_bar", {120, 20}, progressBar},
        {"progress_bar_full", {120, 20}, fullProgressBar},
        {"tabs_north", {120, 26}, northTabs},
        {"tabs_south", {120, 26}, southTabs},
        {"tabs_west", {26, 100}, westTabs},
        {"tabs_east", {26, 100}, eastTabs},
    };
}
