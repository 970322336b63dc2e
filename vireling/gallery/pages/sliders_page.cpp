#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/state_grid.h"

#include <QBoxLayout>
#include <QSlider>

namespace Vireling {

namespace {

constexpr int verticalHeight = 140;

QSlider *makeSlider(Qt::Orientation orientation, QSlider::TickPosition ticks)
{
    auto *slider = new QSlider(orientation);
    slider->setRange(0, 100);
    slider->setValue(40);
    slider->setTickInterval(20);
    slider->setTickPosition(ticks);
    return slider;
}

void addHorizontal(PageWidget *page)
{
    StateGrid grid(page, "Horizontal", controlStates());
    grid.addRow("Plain", [] { return makeSlider(Qt::Horizontal, QSlider::NoTicks); });
    grid.addRow("Ticks below", [] { return makeSlider(Qt::Horizontal, QSlider::TicksBelow); });
    grid.addRow("Ticks above", [] { return makeSlider(Qt::Horizontal, QSlider::TicksAbove); });
    grid.addRow("Ticks on both sides",
                [] { return makeSlider(Qt::Horizontal, QSlider::TicksBothSides); });
    grid.addRow("Inverted", [] {
        QSlider *slider = makeSlider(Qt::Horizontal, QSlider::NoTicks);
        slider->setInvertedAppearance(true);
        return slider;
    });
}

void addHandles(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Handle under the pointer");
    QSlider *hovered = makeSlider(Qt::Horizontal, QSlider::NoTicks);
    hovered->setValue(50);
    poseHovered(hovered, 0.5, 0.5);
    row->addLayout(page->captioned("Hover", hovered));
    QSlider *pressed = makeSlider(Qt::Horizontal, QSlider::NoTicks);
    pressed->setValue(50);
    posePressed(pressed, 0.5, 0.5);
    row->addLayout(page->captioned("Pressed", pressed));
    for (const int end : {0, 100}) {
        QSlider *slider = makeSlider(Qt::Horizontal, QSlider::NoTicks);
        slider->setValue(end);
        row->addLayout(page->captioned(end == 0 ? "Minimum" : "Maximum", slider));
    }
}

void addVertical(PageWidget *page)
{
    StateGrid grid(page, "Vertical", controlStates());
    for (const auto &[caption, ticks] :
         {std::pair("Plain", QSlider::NoTicks), std::pair("Ticks right", QSlider::TicksRight)}) {
        const QSlider::TickPosition position = ticks;
        grid.addRow(caption, [=] {
            QSlider *slider = makeSlider(Qt::Vertical, position);
            slider->setMinimumHeight(page->scaled(verticalHeight));
            return slider;
        });
    }
}

} // namespace

QWidget *makeSlidersPage(QWidget *parent)
{
    auto *page = new PageWidget("Sliders", parent);
    addHorizontal(page);
    addHandles(page);
    addVertical(page);
    page->endSections();
    return page;
}

} // namespace Vireling
