#pragma once

#include <vector>

class QWidget;

namespace Vireling {

/** One page of the gallery. */
struct GalleryPage
{
    const char *name; ///< what the command line calls it
    QWidget *(*make)(QWidget *parent);
};

/** All pages in the order they are listed. GUI thread, like the widgets they make. */
const std::vector<GalleryPage> &galleryPages();

QWidget *makeButtonsPage(QWidget *parent);
QWidget *makeCalendarPage(QWidget *parent);
QWidget *makeCardsPage(QWidget *parent);
QWidget *makeColoursPage(QWidget *parent);
QWidget *makeColumnViewPage(QWidget *parent);
QWidget *makeComboBoxesPage(QWidget *parent);
QWidget *makeDialsPage(QWidget *parent);
QWidget *makeDockWidgetsPage(QWidget *parent);
QWidget *makeGroupBoxesPage(QWidget *parent);
QWidget *makeIconsPage(QWidget *parent);
QWidget *makeIndicatorsPage(QWidget *parent);
QWidget *makeLineEditsPage(QWidget *parent);
QWidget *makeListsPage(QWidget *parent);
QWidget *makeMdiPage(QWidget *parent);
QWidget *makeMenusPage(QWidget *parent);
QWidget *makeMessageBoxesPage(QWidget *parent);
QWidget *makeProgressBarsPage(QWidget *parent);
QWidget *makeScrollBarsPage(QWidget *parent);
QWidget *makeSlidersPage(QWidget *parent);
QWidget *makeSmallWidgetsPage(QWidget *parent);
QWidget *makeSpinBoxesPage(QWidget *parent);
QWidget *makeSplittersPage(QWidget *parent);
QWidget *makeTabBarsPage(QWidget *parent);
QWidget *makeTabWidgetsPage(QWidget *parent);
QWidget *makeTablesPage(QWidget *parent);
QWidget *makeTextPage(QWidget *parent);
QWidget *makeToolBarsPage(QWidget *parent);
QWidget *makeToolBoxesPage(QWidget *parent);
QWidget *makeToolButtonsPage(QWidget *parent);
QWidget *makeToolTipsPage(QWidget *parent);
QWidget *makeTreesPage(QWidget *parent);
QWidget *makeWindowsPage(QWidget *parent);
QWidget *makeWizardPage(QWidget *parent);

} // namespace Vireling
