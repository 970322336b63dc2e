#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"
#include "vireling/widgets/detailed_tool_tip.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QToolTip>

namespace Vireling {

namespace {

/** What a tooltip looks like, as a part of the page: Qt's own closes with the next movement. */
class InlineToolTip : public QLabel
{
public:
    InlineToolTip()
    {
        ensurePolished();
        setFont(QToolTip::font());
        setPalette(QToolTip::palette());
        setForegroundRole(QPalette::ToolTipText);
        setBackgroundRole(QPalette::ToolTipBase);
        setMargin(1 + style()->pixelMetric(QStyle::PM_ToolTipLabelFrameWidth, nullptr, this));
        setIndent(1);
        setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QStylePainter painter(this);
        QStyleOptionFrame option;
        option.init(this);
        painter.drawPrimitive(QStyle::PE_PanelTipLabel, option);
        painter.end();
        QLabel::paintEvent(event);
    }
};

/** The texts of the detailed tooltips, which are put together anew in each language. */
QString makeDetailedTip()
{
    return detailedToolTip(galleryText("USB key"),
                           galleryText("The report is saved here.\nLeave it plugged in until "
                                       "saving is done."));
}

void addOnControls(PageWidget *page)
{
    QBoxLayout *row = page->addRow("On controls");
    auto *plain = page->say(new QPushButton, &QPushButton::setText, "Plain tooltip");
    page->say<QWidget>(plain, &QWidget::setToolTip, sampleSentence);
    row->addWidget(plain);
    auto *detailed = page->say(new QPushButton, &QPushButton::setText, "Detailed tooltip");
    page->addText([=] { detailed->setToolTip(makeDetailedTip()); });
    row->addWidget(detailed);
    row->addStretch();
}

} // namespace

QWidget *makeToolTipsPage(QWidget *parent)
{
    auto *page = new PageWidget("Tooltips", parent);
    QBoxLayout *row = page->addRow("Shown");
    auto *plain = page->say(new InlineToolTip, &QLabel::setText, sampleSentence);
    row->addLayout(page->captioned("Plain", plain));
    auto *detailed = new InlineToolTip;
    page->addText([=] { detailed->setText(makeDetailedTip()); });
    row->addLayout(page->captioned("Detailed", detailed));
    row->addStretch();
    addOnControls(page);
    page->endSections();
    return page;
}

} // namespace Vireling
