#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/palette/current_palette.h"

#include <QGridLayout>
#include <QLabel>
#include <QMetaEnum>
#include <QPainter>

namespace Vireling {

namespace {

constexpr int swatchWidth = 40;
constexpr int swatchHeight = 20;
constexpr int rolesPerColumn = 14;
constexpr int columnsPerRole = 5;

constexpr QPalette::ColorGroup groups[]{QPalette::Active, QPalette::Inactive, QPalette::Disabled};

/** One colour with a frame, so that it shows on a ground of the same colour. */
class Swatch : public QWidget
{
public:
    Swatch(PageWidget *page, const QColor &shownColour)
        : colour(shownColour)
    {
        setFixedSize(page->scaled(swatchWidth), page->scaled(swatchHeight));
        setToolTip(colour.name());
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), colour);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

private:
    const QColor colour;
};

template <typename Role>
void addRole(PageWidget *page, QGridLayout *grid, int index, const char *name, Role role)
{
    const Palette &palette = currentPalette();
    const int row = 1 + index % rolesPerColumn;
    int column = columnsPerRole * (index / rolesPerColumn);
    // The names are identifiers of the code and the same in every language.
    grid->addWidget(new QLabel(QLatin1String(name)), row, column++);
    for (const QPalette::ColorGroup group : groups)
        grid->addWidget(new Swatch(page, palette.brush(group, role).color()), row, column++);
}

void addHeadings(PageWidget *page, QGridLayout *grid)
{
    for (int block = 0; block < 2; ++block) {
        int column = columnsPerRole * block + 1;
        for (const char *caption : {"Active", "Inactive", "Disabled"})
            grid->addWidget(page->makeCaption(caption), 0, column++);
        grid->setColumnMinimumWidth(columnsPerRole * block + columnsPerRole - 1, page->scaled(24));
    }
    grid->setColumnStretch(2 * columnsPerRole, 1);
}

} // namespace

QWidget *makeColoursPage(QWidget *parent)
{
    auto *page = new PageWidget("Colours", parent);
    QGridLayout *own = page->addGrid("Roles of the toolkit");
    addHeadings(page, own);
    const auto ownRoles = QMetaEnum::fromType<ColourRole>();
    for (int role = 0; role < colourRoleCount; ++role)
        addRole(page, own, role, ownRoles.valueToKey(role), ColourRole(role));
    QGridLayout *standard = page->addGrid("Standard roles");
    addHeadings(page, standard);
    const auto standardRoles = QMetaEnum::fromType<QPalette::ColorRole>();
    int index = 0;
    for (int role = 0; role < QPalette::NColorRoles; ++role)
        if (role != QPalette::NoRole)
            addRole(page, standard, index++, standardRoles.valueToKey(role),
                    QPalette::ColorRole(role));
    page->endSections();
    return page;
}

} // namespace Vireling
