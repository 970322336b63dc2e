#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>

namespace Vireling {

namespace {

constexpr int verticalHeight = 140;
constexpr int textMargin = 24; // Qt's size hint knows of percentages alone

QProgressBar *makeBar(int value)
{
    auto *bar = new QProgressBar;
    bar->setRange(0, 100);
    bar->setValue(value);
    return bar;
}

void addValues(PageWidget *page)
{
    QGridLayout *grid = page->addGrid("Values");
    const struct
    {
        const char *caption;
        int value;
    } rows[]{{"Not begun", 0}, {"Begun", 4}, {"Half", 52}, {"Nearly done", 96}, {"Done", 100}};
    for (const auto &row : rows) {
        const int line = grid->rowCount();
        auto *label = page->say(new QLabel, &QLabel::setText, row.caption);
        QProgressBar *bar = makeBar(row.value);
        QProgressBar *plain = makeBar(row.value);
        plain->setTextVisible(false);
        QProgressBar *disabled = makeBar(row.value);
        disabled->setEnabled(false);
        grid->addWidget(label, line, 0);
        int column = 1;
        for (QProgressBar *shown : {bar, plain, disabled}) {
            page->nameControl(shown, [=] { return label->text(); });
            grid->addWidget(shown, line, column++);
        }
    }
    int column = 1;
    for (const char *caption : {"With text", "Without text", "Disabled"})
        grid->addWidget(page->makeCaption(caption), 0, column++);
}

void addKinds(PageWidget *page)
{
    QGridLayout *grid = page->addGrid("Kinds");
    auto *busy = makeBar(0);
    busy->setRange(0, 0);
    grid->addLayout(page->captioned("Busy", busy), 0, 0);
    auto *inverted = makeBar(30);
    inverted->setInvertedAppearance(true);
    grid->addLayout(page->captioned("Inverted", inverted), 0, 1);
    auto *format = page->say(makeBar(70), &QProgressBar::setFormat, "Saving, %p percent");
    page->addText([=] {
        format->setMinimumWidth(format->fontMetrics().horizontalAdvance(format->text()) +
                                page->scaled(textMargin));
    });
    grid->addLayout(page->captioned("Own text", format), 0, 2);
}

void addVertical(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Vertical");
    const char *const captions[]{"Begun", "Half", "Done"};
    const int values[]{5, 50, 100};
    for (int index = 0; index < 3; ++index) {
        QProgressBar *bar = makeBar(values[index]);
        bar->setOrientation(Qt::Vertical);
        bar->setMinimumHeight(page->scaled(verticalHeight));
        row->addLayout(page->captioned(captions[index], bar));
    }
    row->addStretch();
}

} // namespace

QWidget *makeProgressBarsPage(QWidget *parent)
{
    auto *page = new PageWidget("Progress bars", parent);
    addValues(page);
    addKinds(page);
    addVertical(page);
    page->endSections();
    return page;
}

} // namespace Vireling
