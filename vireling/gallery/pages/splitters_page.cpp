#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pose.h"
#include "vireling/gallery/samples.h"

#include <QBoxLayout>
#include <QLabel>
#include <QRubberBand>
#include <QSizeGrip>
#include <QSplitter>
#include <QSplitterHandle>

namespace Vireling {

namespace {

constexpr int splitterHeight = 120;
constexpr int bandWidth = 200;

QSplitter *makeSplitter(PageWidget *page, Qt::Orientation orientation)
{
    auto *splitter = new QSplitter(orientation);
    for (int part = 0; part < 2; ++part) {
        auto *contents = page->say(new QLabel, &QLabel::setText, sampleSentence);
        contents->setWordWrap(true);
        contents->setMargin(page->scaled(8));
        splitter->addWidget(contents);
    }
    splitter->setMinimumHeight(page->scaled(splitterHeight));
    return splitter;
}

QRubberBand *makeBand(PageWidget *page, QRubberBand::Shape shape)
{
    auto *band = new QRubberBand(shape);
    band->setWindowFlags(Qt::Widget);
    const int height = shape == QRubberBand::Line ? 4 : splitterHeight / 2;
    band->setFixedSize(page->scaled(bandWidth), page->scaled(height));
    return band;
}

void addSplitters(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Splitters");
    row->addLayout(page->captioned("Side by side", makeSplitter(page, Qt::Horizontal)), 1);
    row->addLayout(page->captioned("One above the other", makeSplitter(page, Qt::Vertical)), 1);
    QSplitter *hovered = makeSplitter(page, Qt::Horizontal);
    hovered->handle(1)->setAttribute(Qt::WA_UnderMouse);
    row->addLayout(page->captioned("Hover", hovered), 1);
}

void addFrames(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Frames");
    const struct
    {
        const char *caption;
        QFrame::Shape shape;
        QFrame::Shadow shadow;
    } kinds[]{{"Styled panel", QFrame::StyledPanel, QFrame::Plain},
              {"Raised panel", QFrame::Panel, QFrame::Raised},
              {"Sunken panel", QFrame::Panel, QFrame::Sunken},
              {"Box", QFrame::Box, QFrame::Plain},
              {"Line", QFrame::HLine, QFrame::Sunken}};
    for (const auto &kind : kinds) {
        auto *frame = new QFrame;
        frame->setFrameStyle(int(kind.shape) | int(kind.shadow));
        frame->setMinimumHeight(page->scaled(splitterHeight / 3));
        row->addLayout(page->captioned(kind.caption, frame));
    }
}

} // namespace

QWidget *makeSplittersPage(QWidget *parent)
{
    auto *page = new PageWidget("Splitters, grips and frames", parent);
    addSplitters(page);
    addFrames(page);
    QBoxLayout *bands = page->addRow("Rubber bands");
    for (const auto &[caption, shape] :
         {std::pair("Rectangle", QRubberBand::Rectangle), std::pair("Line", QRubberBand::Line)}) {
        QRubberBand *band = makeBand(page, shape);
        bands->addLayout(page->captioned(caption, band));
        band->show(); // it hides itself when made
    }
    bands->addStretch();
    QBoxLayout *grips = page->addRow("Size grip");
    grips->addWidget(new QSizeGrip(page));
    grips->addStretch();
    page->endSections();
    return page;
}

} // namespace Vireling
