#pragma once

#include "vireling/gallery/pose.h"

#include <functional>
#include <vector>

class QGridLayout;
class QWidget;

namespace Vireling {

class PageWidget;

/** A section that shows kinds of a control as rows and the states of each as columns. */
class StateGrid
{
public:
    StateGrid(PageWidget *owner, const char *heading, std::vector<Pose> states);

    /** One row; `make` is called once a column. */
    void addRow(const char *caption, const std::function<QWidget *()> &make);

private:
    QWidget *focusAnchor(QWidget *candidate);
    void addColumnHeadings();

    PageWidget *const page;
    QGridLayout *const grid;
    const std::vector<Pose> columns;
};

/** Default, focused, hover, pressed, disabled. */
const std::vector<Pose> &buttonStates();
/** Default, focused, hover, disabled. */
const std::vector<Pose> &controlStates();
/** Default, focused, hover, read-only, disabled. */
const std::vector<Pose> &fieldStates();

} // namespace Vireling
