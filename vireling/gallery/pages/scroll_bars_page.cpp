#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/state_grid.h"

#include <QBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

namespace Vireling {

namespace {

constexpr int barLength = 152;
constexpr int areaHeight = 180;
constexpr int contentsSize = 900;

QScrollBar *makeBar(PageWidget *page, Qt::Orientation orientation)
{
    auto *bar = new QScrollBar(orientation);
    bar->setRange(0, 100);
    bar->setPageStep(60);
    bar->setValue(50);
    const bool horizontal = orientation == Qt::Horizontal;
    (bar->*(horizontal ? &QWidget::setMinimumWidth : &QWidget::setMinimumHeight))(
        page->scaled(horizontal ? barLength : areaHeight));
    return bar;
}

void addBars(PageWidget *page, Qt::Orientation orientation, const char *heading)
{
    QBoxLayout *row = page->addRow(heading);
    row->addLayout(page->captioned("Default", makeBar(page, orientation)));
    QScrollBar *hovered = makeBar(page, orientation);
    poseHovered(hovered, 0.5, 0.5);
    row->addLayout(page->captioned("Hover", hovered));
    QScrollBar *pressed = makeBar(page, orientation);
    posePressed(pressed, 0.5, 0.5);
    row->addLayout(page->captioned("Pressed", pressed));
    QScrollBar *disabled = makeBar(page, orientation);
    disabled->setEnabled(false);
    row->addLayout(page->captioned("Disabled", disabled));
    QScrollBar *longest = makeBar(page, orientation);
    longest->setRange(0, 100000);
    row->addLayout(page->captioned("Smallest handle", longest));
    row->addStretch();
}

QScrollArea *makeArea(PageWidget *page, QFrame::Shape shape)
{
    auto *contents = new QLabel;
    contents->setAlignment(Qt::AlignTop);
    contents->setMargin(page->scaled(8));
    contents->setMinimumSize(page->scaled(contentsSize), page->scaled(contentsSize));
    page->say(contents, &QLabel::setText, "Contents larger than the area");
    auto *area = new QScrollArea;
    area->setWidget(contents);
    area->setFrameShape(shape);
    area->setMinimumHeight(page->scaled(areaHeight));
    return area;
}

} // namespace

QWidget *makeScrollBarsPage(QWidget *parent)
{
    auto *page = new PageWidget("Scroll bars", parent);
    addBars(page, Qt::Horizontal, "Horizontal");
    addBars(page, Qt::Vertical, "Vertical");
    QBoxLayout *areas = page->addRow("Scroll areas");
    areas->addLayout(page->captioned("With frame", makeArea(page, QFrame::StyledPanel)));
    areas->addLayout(page->captioned("Without frame", makeArea(page, QFrame::NoFrame)));
    page->endSections();
    return page;
}

} // namespace Vireling
