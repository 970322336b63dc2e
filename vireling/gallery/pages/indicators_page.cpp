#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"
#include "vireling/gallery/state_grid.h"

#include <QCheckBox>
#include <QRadioButton>

namespace Vireling {

namespace {

QCheckBox *makeCheckBox(PageWidget *page, Qt::CheckState state)
{
    auto *box = page->say(new QCheckBox, &QCheckBox::setText, "Core image");
    box->setTristate(state == Qt::PartiallyChecked);
    box->setCheckState(state);
    return box;
}

QRadioButton *makeRadioButton(PageWidget *page, bool checked)
{
    auto *button = page->say(new QRadioButton, &QRadioButton::setText, "USB key");
    button->setAutoExclusive(false); // each shows its own state here
    button->setChecked(checked);
    return button;
}

} // namespace

QWidget *makeIndicatorsPage(QWidget *parent)
{
    auto *page = new PageWidget("Check boxes and radio buttons", parent);
    StateGrid boxes(page, "Check boxes", buttonStates());
    boxes.addRow("Off", [=] { return makeCheckBox(page, Qt::Unchecked); });
    boxes.addRow("Checked", [=] { return makeCheckBox(page, Qt::Checked); });
    boxes.addRow("Partially checked", [=] { return makeCheckBox(page, Qt::PartiallyChecked); });
    boxes.addRow("With icon", [=] {
        QCheckBox *box = makeCheckBox(page, Qt::Checked);
        box->setIcon(storageIcon());
        return box;
    });
    StateGrid buttons(page, "Radio buttons", buttonStates());
    buttons.addRow("Off", [=] { return makeRadioButton(page, false); });
    buttons.addRow("Checked", [=] { return makeRadioButton(page, true); });
    buttons.addRow("With icon", [=] {
        QRadioButton *button = makeRadioButton(page, true);
        button->setIcon(usbKeyIcon());
        return button;
    });
    page->endSections();
    return page;
}

} // namespace Vireling
