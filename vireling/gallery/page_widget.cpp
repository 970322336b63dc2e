#include "vireling/gallery/page_widget.h"

#include "vireling/palette/fonts.h"

#include <QAccessible>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace Vireling {

namespace {

constexpr int pageMargin = 24;
constexpr int sectionGap = 16;
constexpr int headingGap = 8;
constexpr int columnGap = 16;
constexpr int rowGap = 8;
constexpr int captionGap = 4;

bool hasOwnName(QWidget *control)
{
    const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(control);
    return known && !known->text(QAccessible::Name).isEmpty();
}

} // namespace

QWidget *framed(QWidget *window)
{
    auto *frame = new QFrame;
    frame->setFrameShape(QFrame::StyledPanel);
    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins({});
    layout->addWidget(window);
    window->setWindowFlags(Qt::Widget);
    window->show(); // setting the flags hid it
    return frame;
}

PageWidget::PageWidget(const char *title, QWidget *parent)
    : TranslatableWidget<QWidget, Ui::NoForm>(parent)
    , sections(new QVBoxLayout(this))
{
    const int margin = scaled(pageMargin);
    sections->setContentsMargins(margin, margin, margin, margin);
    sections->setSpacing(scaled(headingGap));
    auto *heading = new QLabel;
    heading->setFont(styleFont(FontWeight::SemiBold, FontSize::Largest));
    sections->addWidget(say(heading, &QLabel::setText, title));
    say<QWidget>(this, &QWidget::setWindowTitle, title);
}

void PageWidget::addText(const std::function<void()> &setText)
{
    setText();
    addRetranslation(setText);
}

void PageWidget::nameControl(QWidget *control, const std::function<QString()> &name)
{
    if (!hasOwnName(control))
        addText([=] { control->setAccessibleName(name()); });
}

void PageWidget::addHeading(const char *heading)
{
    auto *label = new QLabel;
    label->setFont(styleFont(FontWeight::SemiBold, FontSize::Large));
    sections->addSpacing(scaled(sectionGap));
    sections->addWidget(say(label, &QLabel::setText, heading));
}

QGridLayout *PageWidget::addGrid(const char *heading)
{
    addHeading(heading);
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(scaled(columnGap));
    grid->setVerticalSpacing(scaled(rowGap));
    sections->addLayout(grid);
    return grid;
}

QBoxLayout *PageWidget::addRow(const char *heading)
{
    addHeading(heading);
    auto *row = new QHBoxLayout;
    row->setSpacing(scaled(columnGap));
    sections->addLayout(row);
    return row;
}

QBoxLayout *PageWidget::addColumn(const char *heading)
{
    addHeading(heading);
    auto *column = new QVBoxLayout;
    column->setSpacing(scaled(rowGap));
    sections->addLayout(column);
    return column;
}

QLabel *PageWidget::makeCaption(const char *caption)
{
    return say(new QLabel, &QLabel::setText, caption);
}

QLayout *PageWidget::captioned(const char *caption, QWidget *control)
{
    auto *column = new QVBoxLayout;
    column->setSpacing(scaled(captionGap));
    column->setContentsMargins(0, 0, 0, scaled(rowGap)); // nearer to its control than to others
    column->addWidget(makeCaption(caption));
    column->addWidget(control);
    column->addStretch();
    nameControl(control, [=] { return galleryText(caption); });
    return column;
}

void PageWidget::endSections()
{
    sections->addStretch(1);
}

int PageWidget::scaled(int designPixels) const
{
    return qRound(designPixels * logicalDpiX() / 96.0);
}

} // namespace Vireling
