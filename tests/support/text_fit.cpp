#include "support/text_fit.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOption>
#include <QTabBar>

namespace {

/** Reaches what a widget tells the style about itself; a pointer to a member may be inherited. */
template <typename Widget>
struct Opened : Widget
{
    template <typename Option, typename... Tab>
    static Option option(const Widget &widget, Tab... tab)
    {
        Option option;
        (widget.*(&Opened::initStyleOption))(&option, tab...);
        return option;
    }
};

QSize textSize(const QFontMetrics &metrics, const QString &text)
{
    return metrics.size(Qt::TextShowMnemonic, text);
}

QString misfit(const char *where, const QSize &needed, const QSize &room)
{
    if (needed.width() <= room.width() && needed.height() <= room.height())
        return QString();
    return QStringLiteral("%1 needs %2x%3 and has %4x%5")
        .arg(QLatin1String(where))
        .arg(needed.width())
        .arg(needed.height())
        .arg(room.width())
        .arg(room.height());
}

QString firstOf(const QString &one, const QString &other)
{
    return one.isEmpty() ? other : one;
}

QString labelMisfit(const QLabel &label)
{
    if (label.text().isEmpty())
        return QString();
    const QSize needed = label.hasHeightForWidth() ? QSize(label.minimumSizeHint().width(),
                                                           label.heightForWidth(label.width()))
                                                   : label.sizeHint();
    return misfit("text", needed, label.size());
}

/** The text and, beside it, the icon, in the rectangle where the style draws them. */
template <typename Button>
QString contentsMisfit(const Button &button, QStyle::SubElement contents)
{
    const auto option = Opened<Button>::template option<QStyleOptionButton>(button);
    QSize needed = textSize(button.fontMetrics(), button.text());
    if (!button.icon().isNull())
        needed.rwidth() += option.iconSize.width();
    return misfit("text", needed,
                  button.style()->subElementRect(contents, &option, &button).size());
}

QString buttonMisfit(const QAbstractButton &button)
{
    if (button.text().isEmpty())
        return QString();
    if (qobject_cast<const QCommandLinkButton *>(&button)) // its description wraps
        return misfit("button",
                      QSize(button.sizeHint().width(), button.heightForWidth(button.width())),
                      button.size());
    const QString whole = misfit("button", button.sizeHint(), button.size());
    if (const auto *push = qobject_cast<const QPushButton *>(&button))
        return firstOf(whole, contentsMisfit(*push, QStyle::SE_PushButtonContents));
    if (const auto *check = qobject_cast<const QCheckBox *>(&button))
        return firstOf(whole, contentsMisfit(*check, QStyle::SE_CheckBoxContents));
    if (const auto *radio = qobject_cast<const QRadioButton *>(&button))
        return firstOf(whole, contentsMisfit(*radio, QStyle::SE_RadioButtonContents));
    return whole;
}

QString groupBoxMisfit(const QGroupBox &box)
{
    if (box.title().isEmpty())
        return QString();
    const auto option = Opened<QGroupBox>::option<QStyleOptionGroupBox>(box);
    const QRect room =
        box.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, &box);
    return misfit("title", textSize(box.fontMetrics(), box.title()), (room & box.rect()).size());
}

bool scrolls(const QTabBar &bar)
{
    if (!bar.usesScrollButtons())
        return false;
    const bool vertical =
        bar.shape() == QTabBar::RoundedWest || bar.shape() == QTabBar::RoundedEast;
    return vertical ? bar.sizeHint().height() > bar.height() : bar.sizeHint().width() > bar.width();
}

/** A bar narrower than its tabs scrolls, and what has scrolled out need not fit. */
QString tabBarMisfit(const QTabBar &bar)
{
    if (scrolls(bar))
        return QString();
    for (int index = 0; index < bar.count(); ++index) {
        const auto option = Opened<QTabBar>::option<QStyleOptionTab>(bar, index);
        if (!bar.rect().contains(bar.tabRect(index)))
            return QStringLiteral("tab \"%1\" reaches out of the bar").arg(bar.tabText(index));
        if (option.text != bar.tabText(index))
            return QStringLiteral("tab \"%1\" is cut to \"%2\"")
                .arg(bar.tabText(index), option.text);
    }
    return QString();
}

QString comboBoxMisfit(const QComboBox &box)
{
    const auto option = Opened<QComboBox>::option<QStyleOptionComboBox>(box);
    const QRect room = box.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                   QStyle::SC_ComboBoxEditField, &box);
    QSize needed = textSize(box.fontMetrics(), box.currentText());
    if (!option.currentIcon.isNull())
        needed.rwidth() += option.iconSize.width();
    return misfit("choice", needed, room.size());
}

/** Text in a field scrolls, but numbers and dates must show whole, and lines in full height. */
QString lineEditMisfit(const QLineEdit &edit)
{
    const bool ofSpinBox = qobject_cast<const QAbstractSpinBox *>(edit.parentWidget());
    QSize needed(0, edit.fontMetrics().height());
    if (ofSpinBox)
        needed.setWidth(edit.fontMetrics().horizontalAdvance(edit.displayText()));
    return misfit("field", needed, edit.size());
}

QString progressBarMisfit(const QProgressBar &bar)
{
    if (!bar.isTextVisible() || bar.text().isEmpty() || bar.orientation() == Qt::Vertical)
        return QString();
    const auto option = Opened<QProgressBar>::option<QStyleOptionProgressBar>(bar);
    const QRect room = bar.style()->subElementRect(QStyle::SE_ProgressBarLabel, &option, &bar);
    return misfit("text", textSize(bar.fontMetrics(), bar.text()), room.size());
}

QString menuBarMisfit(const QMenuBar &bar)
{
    for (const QAction *action : bar.actions()) {
        const QRect room = bar.actionGeometry(const_cast<QAction *>(action));
        const QString found =
            misfit("menu", textSize(bar.fontMetrics(), action->text()), (room & bar.rect()).size());
        if (!found.isEmpty())
            return found;
    }
    return QString();
}

/** Headings of columns; the user makes those of other views as wide as wanted. */
QString headerMisfit(const QHeaderView &header)
{
    const bool horizontal = header.orientation() == Qt::Horizontal;
    for (int section = 0; section < header.count(); ++section) {
        const int needed = header.sectionSizeHint(section);
        if (!header.isSectionHidden(section) && header.sectionSize(section) < needed)
            return QStringLiteral("section %1 needs %2 and has %3")
                .arg(section)
                .arg(needed)
                .arg(header.sectionSize(section));
    }
    const int across = horizontal ? header.height() : header.width();
    return across < header.fontMetrics().height() ? QStringLiteral("lower than its text")
                                                  : QString();
}

QString rowMisfit(const QAbstractItemView &view)
{
    const QModelIndex first =
        view.model() ? view.model()->index(0, 0, view.rootIndex()) : QModelIndex();
    if (!first.isValid())
        return QString();
    const int room = view.visualRect(first).height();
    const int needed = view.fontMetrics().height();
    return room < needed ? QStringLiteral("rows of %1 for text of %2").arg(room).arg(needed)
                         : QString();
}

} // namespace

QString textOf(const QWidget &widget)
{
    for (const char *property : {"text", "title", "currentText", "windowTitle", "accessibleName"}) {
        const QString text = widget.property(property).toString();
        if (!text.isEmpty())
            return text;
    }
    return widget.objectName();
}

QString textMisfit(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return labelMisfit(*label);
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return buttonMisfit(*button);
    if (const auto *box = qobject_cast<const QGroupBox *>(&widget))
        return groupBoxMisfit(*box);
    if (const auto *bar = qobject_cast<const QTabBar *>(&widget))
        return tabBarMisfit(*bar);
    if (const auto *box = qobject_cast<const QComboBox *>(&widget))
        return comboBoxMisfit(*box);
    if (const auto *edit = qobject_cast<const QLineEdit *>(&widget))
        return lineEditMisfit(*edit);
    if (const auto *bar = qobject_cast<const QProgressBar *>(&widget))
        return progressBarMisfit(*bar);
    if (const auto *bar = qobject_cast<const QMenuBar *>(&widget))
        return menuBarMisfit(*bar);
    if (const auto *menu = qobject_cast<const QMenu *>(&widget))
        return misfit("menu", menu->sizeHint(), menu->size());
    if (const auto *header = qobject_cast<const QHeaderView *>(&widget))
        return headerMisfit(*header);
    if (const auto *view = qobject_cast<const QAbstractItemView *>(&widget))
        return rowMisfit(*view);
    return QString();
}
