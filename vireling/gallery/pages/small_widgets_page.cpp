#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"
#include "vireling/widgets/elided_label.h"
#include "vireling/widgets/icon_label.h"
#include "vireling/widgets/static_svg_widget.h"

#include <QBoxLayout>

namespace Vireling {

namespace {

constexpr int elidedWidths[]{60, 120, 400};
constexpr int iconSizes[]{16, 24, 32, 64};
constexpr const char *iconCaptions[]{"16 pixels", "24 pixels", "32 pixels", "64 pixels"};
constexpr int logoSize = 200;

void addElidedLabels(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Elided labels");
    const char *const captions[]{"Narrow", "Wider", "Wide enough"};
    int index = 0;
    for (const int width : elidedWidths) {
        auto *label = page->say(new ElidedLabel, &ElidedLabel::setText, sampleSentence);
        label->setFixedWidth(page->scaled(width));
        row->addLayout(page->captioned(captions[index++], label));
    }
    row->addStretch();
}

void addIconLabels(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Icon labels");
    int index = 0;
    for (const int size : iconSizes) {
        auto *label = new IconLabel(usbKeyIcon());
        label->setIconSize({page->scaled(size), page->scaled(size)});
        row->addLayout(page->captioned(iconCaptions[index++], label));
    }
    auto *framed = new IconLabel(storageIcon());
    framed->setFrameShape(QFrame::StyledPanel);
    row->addLayout(page->captioned("Framed", framed));
    auto *disabled = new IconLabel(storageIcon());
    disabled->setEnabled(false);
    row->addLayout(page->captioned("Disabled", disabled));
    row->addStretch();
}

void addLogos(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Pictures");
    for (const char *file : {"vireling:/images/tovask_logo.svg", "vireling:/images/r4_logo.svg"}) {
        auto *logo = new StaticSvgWidget(QLatin1String(file));
        const QSizeF size =
            QSizeF(logo->defaultSize())
                .scaled(page->scaled(logoSize), page->scaled(logoSize), Qt::KeepAspectRatio);
        logo->setFixedSize(size.toSize());
        row->addWidget(logo, 0, Qt::AlignTop);
    }
    row->addStretch();
}

} // namespace

QWidget *makeSmallWidgetsPage(QWidget *parent)
{
    auto *page = new PageWidget("Small widgets", parent);
    addElidedLabels(page);
    addIconLabels(page);
    addLogos(page);
    page->endSections();
    return page;
}

} // namespace Vireling
