#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"
#include "vireling/window/wizard.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QWizardPage>

namespace Vireling {

namespace {

constexpr int wizardHeight = 320;

QWizardPage *makeWizardStep(PageWidget *page, const char *title)
{
    auto *step = page->say(new QWizardPage, &QWizardPage::setTitle, title);
    page->say(step, &QWizardPage::setSubTitle, sampleSentence);
    auto *column = new QVBoxLayout(step);
    for (const char *text : {"Core image", "System log", "Settings"})
        column->addWidget(page->say(new QCheckBox, &QCheckBox::setText, text));
    return step;
}

Wizard *makeWizard(PageWidget *page, QWizard::WizardStyle style)
{
    auto *wizard = new Wizard(page);
    wizard->setWindowFlags(Qt::Widget);
    wizard->setWizardStyle(style);
    wizard->setOption(QWizard::HaveHelpButton);
    page->say<QWidget>(wizard, &QWidget::setWindowTitle, "Save the report");
    wizard->addPage(makeWizardStep(page, "What to save"));
    wizard->addPage(makeWizardStep(page, "Where to save it"));
    wizard->setMinimumHeight(page->scaled(wizardHeight));
    return wizard;
}

} // namespace

QWidget *makeWizardPage(QWidget *parent)
{
    auto *page = new PageWidget("Wizard", parent);
    QBoxLayout *column = page->addColumn("Styles");
    Wizard *classic = makeWizard(page, QWizard::ClassicStyle);
    column->addLayout(page->captioned("First page", classic));
    Wizard *modern = makeWizard(page, QWizard::ModernStyle);
    column->addLayout(page->captioned("Last page, with a banner", modern));
    classic->show();
    modern->show();
    modern->next();
    page->endSections();
    return page;
}

} // namespace Vireling
