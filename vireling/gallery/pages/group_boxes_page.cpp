#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pose.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace Vireling {

namespace {

enum class Kind
{
    Plain,
    Checked,
    Unchecked,
    Flat
};

QGroupBox *makeBox(PageWidget *page, Kind kind)
{
    auto *box = page->say(new QGroupBox, &QGroupBox::setTitle, "Attach to the report");
    auto *column = new QVBoxLayout(box);
    for (const char *text : {"Core image", "System log"})
        column->addWidget(page->say(new QCheckBox, &QCheckBox::setText, text));
    box->setCheckable(kind == Kind::Checked || kind == Kind::Unchecked);
    box->setChecked(kind == Kind::Checked);
    box->setFlat(kind == Kind::Flat);
    return box;
}

void addTitles(PageWidget *page)
{
    QGridLayout *grid = page->addGrid("Titles");
    auto *untitled = new QGroupBox;
    auto *column = new QVBoxLayout(untitled);
    column->addWidget(page->say(new QCheckBox, &QCheckBox::setText, "Core image"));
    grid->addLayout(page->captioned("Without title", untitled), 0, 0);
    QGroupBox *centred = makeBox(page, Kind::Plain);
    centred->setAlignment(Qt::AlignHCenter);
    grid->addLayout(page->captioned("Centred title", centred), 0, 1);
    QGroupBox *trailing = makeBox(page, Kind::Plain);
    trailing->setAlignment(Qt::AlignRight);
    grid->addLayout(page->captioned("Trailing title", trailing), 0, 2);
    grid->addLayout(page->captioned("Flat", makeBox(page, Kind::Flat)), 0, 3);
}

} // namespace

QWidget *makeGroupBoxesPage(QWidget *parent)
{
    auto *page = new PageWidget("Group boxes", parent);
    for (const auto &[kind, heading] :
         {std::pair(Kind::Plain, "Plain"), std::pair(Kind::Checked, "Checkable")}) {
        QGridLayout *grid = page->addGrid(heading);
        int column = 0;
        for (const Pose state : {Pose::Default, Pose::Focused, Pose::Hovered, Pose::Disabled}) {
            if (kind == Kind::Plain && state != Pose::Default && state != Pose::Disabled)
                continue; // only a check box in the title takes focus and pointer
            QGroupBox *box = makeBox(page, kind);
            pose(box, state, box);
            if (state == Pose::Focused)
                page->setFocusProxy(box);
            grid->addLayout(page->captioned(poseName(state), box), 0, column++);
        }
        if (kind == Kind::Checked)
            grid->addLayout(page->captioned("Unchecked", makeBox(page, Kind::Unchecked)), 0,
                            column);
    }
    addTitles(page);
    page->endSections();
    return page;
}

} // namespace Vireling
