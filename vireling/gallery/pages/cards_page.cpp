#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pose.h"
#include "vireling/gallery/samples.h"
#include "vireling/widgets/card_button.h"

#include <QGridLayout>

namespace Vireling {

namespace {

constexpr int cardIconSize = 32;

CardButton *makeCard(PageWidget *page, const QIcon &icon)
{
    auto *card = page->say(new CardButton, &CardButton::setText, "Save the report");
    page->say(card, &CardButton::setDescription, "Writes it to the USB key.");
    card->setIcon(icon);
    card->setIconSize({page->scaled(cardIconSize), page->scaled(cardIconSize)});
    card->setFocusPolicy(Qt::StrongFocus);
    return card;
}

void addStates(PageWidget *page)
{
    QGridLayout *grid = page->addGrid("States");
    CardButton *anchor = nullptr;
    int position = 0;
    for (const Pose state :
         {Pose::Default, Pose::Focused, Pose::Hovered, Pose::Pressed, Pose::Disabled}) {
        CardButton *card = makeCard(page, usbKeyIcon());
        pose(card, state, card);
        if (state == Pose::Focused)
            anchor = card;
        grid->addLayout(page->captioned(poseName(state), card), position / 3, position % 3);
        ++position;
    }
    page->setFocusProxy(anchor);
    CardButton *checked = makeCard(page, storageIcon());
    checked->setCheckable(true);
    checked->setChecked(true);
    grid->addLayout(page->captioned("Checked", checked), position / 3, position % 3);
    grid->setColumnStretch(3, 1);
}

void addContents(PageWidget *page)
{
    QGridLayout *grid = page->addGrid("Contents");
    grid->addLayout(page->captioned("Without icon", makeCard(page, QIcon())), 0, 0);
    auto *titleOnly = page->say(new CardButton, &CardButton::setText, "Restart");
    grid->addLayout(page->captioned("Title alone", titleOnly), 0, 1);
    CardButton *wide = makeCard(page, storageIcon());
    page->say(wide, &CardButton::setDescription,
              "Writes the report, the core image and the log to internal storage.");
    grid->addLayout(page->captioned("Long description", wide), 0, 2);
    grid->setColumnStretch(3, 1);
}

} // namespace

QWidget *makeCardsPage(QWidget *parent)
{
    auto *page = new PageWidget("Cards", parent);
    addStates(page);
    addContents(page);
    page->endSections();
    return page;
}

} // namespace Vireling
