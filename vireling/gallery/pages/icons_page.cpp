#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"
#include "vireling/style_icon_engine/style_icons.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>

namespace Vireling {

namespace {

constexpr int sizes[]{16, 24, 32, 64};

/** One icon in one mode, drawn by its engine at the density of where it is shown. */
class IconSample : public QWidget
{
public:
    IconSample(const QIcon &shownIcon, int side, QIcon::Mode shownMode, QIcon::State shownState)
        : icon(shownIcon)
        , mode(shownMode)
        , state(shownState)
    {
        setFixedSize(side, side);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        icon.paint(&painter, rect(), Qt::AlignCenter, isEnabled() ? mode : QIcon::Disabled, state);
    }

private:
    const QIcon icon;
    const QIcon::Mode mode;
    const QIcon::State state;
};

struct NamedIcon
{
    const char *name;
    QIcon icon;
};

std::vector<NamedIcon> namedIcons()
{
    return {{"Arrow down", styleIcon(StyleIcon::ArrowDown)},
            {"Arrow left", styleIcon(StyleIcon::ArrowLeft)},
            {"Arrow right", styleIcon(StyleIcon::ArrowRight)},
            {"Arrow up", styleIcon(StyleIcon::ArrowUp)},
            {"Clear", styleIcon(StyleIcon::EditClear)},
            {"Expand down", styleIcon(StyleIcon::ExpandDown)},
            {"Expand left", styleIcon(StyleIcon::ExpandLeft)},
            {"Expand right", styleIcon(StyleIcon::ExpandRight)},
            {"Expand up", styleIcon(StyleIcon::ExpandUp)},
            {"Close", styleIcon(StyleIcon::WindowClose)},
            {"Maximise", styleIcon(StyleIcon::WindowMaximise)},
            {"Minimise", styleIcon(StyleIcon::WindowMinimise)},
            {"Restore", styleIcon(StyleIcon::WindowRestore)},
            {"Internal storage", storageIcon()},
            {"USB key", usbKeyIcon()},
            {"New folder", newFolderIcon()},
            {"Up", parentFolderIcon()}};
}

void addHeadings(PageWidget *page, QGridLayout *grid, int firstColumn)
{
    int column = firstColumn + 1;
    for (const int size : sizes) {
        auto *caption = new QLabel(QString::number(size));
        caption->setForegroundRole(QPalette::PlaceholderText);
        grid->addWidget(caption, 0, column++);
    }
    for (const char *caption : {"Off", "On", "Disabled"})
        grid->addWidget(page->makeCaption(caption), 0, column++);
}

void addIcon(PageWidget *page, QGridLayout *grid, int row, int column, const NamedIcon &named)
{
    auto *label = page->say(new QLabel, &QLabel::setText, named.name);
    grid->addWidget(label, row, column++, Qt::AlignVCenter);
    const auto add = [&](int size, QIcon::Mode mode, QIcon::State state) {
        grid->addWidget(new IconSample(named.icon, page->scaled(size), mode, state), row, column++,
                        Qt::AlignVCenter);
    };
    for (const int size : sizes)
        add(size, QIcon::Active, QIcon::On);
    add(sizes[1], QIcon::Normal, QIcon::Off);
    add(sizes[1], QIcon::Normal, QIcon::On);
    add(sizes[1], QIcon::Disabled, QIcon::Off);
}

} // namespace

QWidget *makeIconsPage(QWidget *parent)
{
    constexpr int columnsPerIcon = 9;
    auto *page = new PageWidget("Icons", parent);
    QGridLayout *grid = page->addGrid("Sizes and states");
    const std::vector<NamedIcon> icons = namedIcons();
    const int rows = (int(icons.size()) + 1) / 2;
    addHeadings(page, grid, 0);
    addHeadings(page, grid, columnsPerIcon);
    grid->setColumnMinimumWidth(columnsPerIcon - 1, page->scaled(24));
    for (int index = 0; index < int(icons.size()); ++index)
        addIcon(page, grid, 1 + index % rows, columnsPerIcon * (index / rows),
                icons[size_t(index)]);
    page->endSections();
    return page;
}

} // namespace Vireling
