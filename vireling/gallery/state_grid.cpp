#include "vireling/gallery/state_grid.h"

#include "vireling/gallery/page_widget.h"

#include <QGridLayout>
#include <QLabel>
#include <QVariant>

namespace Vireling {

namespace {

constexpr int captionWidth = 132;
constexpr int columnWidth = 128;

/** On the page: the control that takes the focus for all that are shown focused. */
constexpr char anchorProperty[] = "gallery_focus_anchor";

} // namespace

StateGrid::StateGrid(PageWidget *owner, const char *heading, std::vector<Pose> states)
    : page(owner)
    , grid(owner->addGrid(heading))
    , columns(std::move(states))
{
    addColumnHeadings();
}

void StateGrid::addColumnHeadings()
{
    grid->setColumnMinimumWidth(0, page->scaled(captionWidth));
    int column = 1;
    for (const Pose state : columns) {
        grid->setColumnMinimumWidth(column, page->scaled(columnWidth));
        grid->addWidget(page->makeCaption(poseName(state)), 0, column++);
    }
    grid->setColumnStretch(column, 1);
}

void StateGrid::addRow(const char *caption, const std::function<QWidget *()> &make)
{
    const int row = grid->rowCount();
    auto *label = new QLabel;
    grid->addWidget(page->say(label, &QLabel::setText, caption), row, 0, Qt::AlignVCenter);
    int column = 1;
    for (const Pose state : columns) {
        QWidget *control = make();
        grid->addWidget(control, row, column++, Qt::AlignVCenter);
        page->nameControl(control, [=] {
            return galleryText("%1, %2").arg(galleryText(caption), galleryText(poseName(state)));
        });
        pose(control, state, state == Pose::Focused ? focusAnchor(control) : nullptr);
    }
}

QWidget *StateGrid::focusAnchor(QWidget *candidate)
{
    auto *anchor = page->property(anchorProperty).value<QWidget *>();
    if (anchor)
        return anchor;
    page->setProperty(anchorProperty, QVariant::fromValue(candidate));
    page->setFocusProxy(candidate);
    return candidate;
}

const std::vector<Pose> &buttonStates()
{
    static const std::vector<Pose> states{Pose::Default, Pose::Focused, Pose::Hovered,
                                          Pose::Pressed, Pose::Disabled};
    return states;
}

const std::vector<Pose> &controlStates()
{
    static const std::vector<Pose> states{Pose::Default, Pose::Focused, Pose::Hovered,
                                          Pose::Disabled};
    return states;
}

const std::vector<Pose> &fieldStates()
{
    static const std::vector<Pose> states{Pose::Default, Pose::Focused, Pose::Hovered,
                                          Pose::ReadOnly, Pose::Disabled};
    return states;
}

} // namespace Vireling
