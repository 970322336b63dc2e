#pragma once

#include <QObject>

class QWidget;

namespace Vireling {

/**
 * Keeps the focus ring of composed input widgets truthful. Qt repaints only the
 * part that has the focus: the line edit within a spin box or an editable combo
 * box, the viewport of a view. Their rings are drawn by the widget around them,
 * which this helper repaints when the focus comes or goes. Owned by the style.
 */
class StyleInputFocusHelper : public QObject
{
    Q_OBJECT

public:
    explicit StyleInputFocusHelper(QObject *parent = nullptr);

    /** Starts and stops caring for `widget`; for widgets without a ring of their own nothing. */
    void watch(QWidget *widget);
    void unwatch(QWidget *widget);

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace Vireling
