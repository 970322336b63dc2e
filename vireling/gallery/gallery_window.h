#pragma once

#include <QWidget>

class QListWidget;
class QScrollArea;

namespace Vireling {

struct GalleryPage;

/** The list of pages and, beside it, the chosen one. */
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    /** Which pages can be used at all: whether controls may be tried out or are all disabled. */
    enum class Controls
    {
        Enabled,
        Disabled
    };

    explicit GalleryWindow(Controls controls);

    /** Opens a page by its name. */
    void openPage(const QString &name);

private:
    void showPage(int row);

    QListWidget *list;
    QScrollArea *area;
    const Controls shownControls;
};

} // namespace Vireling
