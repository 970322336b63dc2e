#include "vireling/window/wizard.h"

#include "vireling/window/window_title_bar.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLayout>

#include <algorithm>

namespace Vireling {

namespace {

/** The names QWizard gives its own buttons; it has no other mark for them. */
bool isWizardButton(const QAbstractButton *button)
{
    const QString name = button->objectName();
    return name.startsWith(QLatin1String("qt_wizard_")) ||
           name.startsWith(QLatin1String("__qt__passive_wizardbutton"));
}

struct StandardButton
{
    QWizard::WizardButton which;
    const char *name;
};

/** Asking QWizard for a button makes it; those in use are found by these names of Qt's. */
constexpr StandardButton standardButtons[]{
    {QWizard::BackButton, "__qt__passive_wizardbutton0"},
    {QWizard::NextButton, "__qt__passive_wizardbutton1"},
    {QWizard::CommitButton, "qt_wizard_commit"},
    {QWizard::FinishButton, "qt_wizard_finish"},
    {QWizard::CancelButton, "qt_wizard_cancel"},
    {QWizard::HelpButton, "__qt__passive_wizardbutton5"},
};

/** The widget that QWizard lays out itself and stretches over the whole window. */
QWidget *contentsOf(const QWizard &wizard, const QWidget *titleBar)
{
    const auto children = wizard.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    const auto found =
        std::find_if(children.begin(), children.end(), [titleBar](const QWidget *child) {
            return child != titleBar && child->layout();
        });
    return found == children.end() ? nullptr : *found;
}

} // namespace

Wizard::Wizard(QWidget *parent, Qt::WindowFlags flags)
    : WindowProxy<QWizard>(parent, flags)
    , contents(contentsOf(*this, titleBar()))
{
    // Else QWizard would draw a frame and title bar of its own on some platforms.
    setProperty("_q_wizard_vista_off", true);
    insetContents();
    connect(this, &QWizard::currentIdChanged, this, &Wizard::equaliseButtons);
}

Wizard::~Wizard() = default;

QList<QAbstractButton *> Wizard::wizardButtons() const
{
    QList<QAbstractButton *> buttons = findChildren<QAbstractButton *>();
    buttons.erase(
        std::remove_if(buttons.begin(), buttons.end(),
                       [](const QAbstractButton *button) { return !isWizardButton(button); }),
        buttons.end());
    return buttons;
}

bool Wizard::event(QEvent *event)
{
    const bool handled = WindowProxy<QWizard>::event(event);
    switch (event->type()) {
    case QEvent::ContentsRectChange:
        insetContents();
        break;
    case QEvent::LanguageChange:
        retranslateButtons();
        equaliseButtons();
        break;
    case QEvent::Show:
    case QEvent::StyleChange:
        equaliseButtons();
        break;
    default:
        break;
    }
    return handled;
}

/** QWizard stretches its contents over the window whatever the window's margins are. */
void Wizard::insetContents()
{
    if (contents)
        contents->setContentsMargins(contentsMargins());
}

/** QWizard itself sets these texts only when the page changes. */
void Wizard::retranslateButtons()
{
    const QWizardPage *page = currentPage();
    for (const StandardButton &standard : standardButtons)
        if (auto *button = findChild<QAbstractButton *>(QLatin1String(standard.name)))
            button->setText(page ? page->buttonText(standard.which) : buttonText(standard.which));
}

/** The row keeps its places from page to page, also where Next becomes Finish. */
void Wizard::equaliseButtons()
{
    const QList<QAbstractButton *> buttons = wizardButtons();
    int width = 0;
    for (QAbstractButton *const button : buttons) {
        button->setMinimumWidth(0);
        width = std::max(width, button->sizeHint().width());
    }
    for (QAbstractButton *const button : buttons)
        button->setMinimumWidth(width);
}

} // namespace Vireling
