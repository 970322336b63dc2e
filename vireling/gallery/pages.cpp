#include "vireling/gallery/pages.h"

namespace Vireling {

const std::vector<GalleryPage> &galleryPages()
{
    static const std::vector<GalleryPage> pages{
        {"buttons", makeButtonsPage},
        {"tool-buttons", makeToolButtonsPage},
        {"cards", makeCardsPage},
        {"indicators", makeIndicatorsPage},
        {"line-edits", makeLineEditsPage},
        {"spin-boxes", makeSpinBoxesPage},
        {"combo-boxes", makeComboBoxesPage},
        {"text", makeTextPage},
        {"sliders", makeSlidersPage},
        {"dials", makeDialsPage},
        {"scroll-bars", makeScrollBarsPage},
        {"progress-bars", makeProgressBarsPage},
        {"tab-bars", makeTabBarsPage},
        {"tab-widgets", makeTabWidgetsPage},
        {"group-boxes", makeGroupBoxesPage},
        {"menus", makeMenusPage},
        {"tool-bars", makeToolBarsPage},
        {"lists", makeListsPage},
        {"trees", makeTreesPage},
        {"tables", makeTablesPage},
        {"tool-boxes", makeToolBoxesPage},
        {"dock-widgets", makeDockWidgetsPage},
        {"splitters", makeSplittersPage},
        {"tool-tips", makeToolTipsPage},
        {"message-boxes", makeMessageBoxesPage},
        {"mdi", makeMdiPage},
        {"wizard", makeWizardPage},
        {"windows", makeWindowsPage},
        {"calendar", makeCalendarPage},
        {"column-view", makeColumnViewPage},
        {"small-widgets", makeSmallWidgetsPage},
        {"icons", makeIconsPage},
        {"colours", makeColoursPage},
    };
    return pages;
}

} // namespace Vireling
