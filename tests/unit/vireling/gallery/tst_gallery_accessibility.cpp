#include "shown_page.h"

#include "vireling/gallery/pages.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"
#include "vireling/window/window_control_button.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Vireling;

namespace {

/**
 * Whether the user can get to the widget. One with a proxy never has the focus itself,
 * and assistive techniques speak of its proxy: the field within a spin box.
 */
bool isReached(const QWidget &widget)
{
    return widget.isVisible() && widget.focusPolicy() != Qt::NoFocus && !widget.focusProxy();
}

/** What a screen reader would miss about a widget; empty when it misses nothing. */
QString missing(QWidget &widget)
{
    const QString className = QLatin1String(widget.metaObject()->className());
    const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(&widget);
    if (!known)
        return className + QLatin1String(" is unknown");
    if (known->text(QAccessible::Name).isEmpty())
        return QStringLiteral("%1 \"%2\" has no name").arg(className, widget.objectName());
    // Areas that scroll whatever is in them, column views too, have the general role in Qt;
    // what they hold has its own.
    const bool general =
        known->role() == QAccessible::Client && !qobject_cast<QAbstractScrollArea *>(&widget);
    if (known->role() == QAccessible::NoRole || general)
        return QStringLiteral("%1 \"%2\" has no role")
            .arg(className, known->text(QAccessible::Name));
    return QString();
}

QStringList allMissing(const QWidget &window)
{
    QStringList problems;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        const bool counts = isReached(*widget) ||
                            (widget->isVisible() && qobject_cast<WindowControlButton *>(widget));
        const QString problem = counts ? missing(*widget) : QString();
        if (!problem.isEmpty())
            problems << problem;
    }
    return problems;
}

} // namespace

class TestGalleryAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFocusableControlHasNameAndRole_data() { addPageRows(); }
    void everyFocusableControlHasNameAndRole();
    void titleBarsHaveNamedButtons();
    void aControlWithoutNameIsFound();
};

void TestGalleryAccessibility::initTestCase()
{
    initialiseResources();
    installAppearance(Theme::Dark);
}

void TestGalleryAccessibility::everyFocusableControlHasNameAndRole()
{
    QFETCH(int, page);

    const auto shown = showPage(galleryPages()[size_t(page)]);
    QVERIFY(shown);

    const QStringList problems = allMissing(*shown);
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
}

void TestGalleryAccessibility::titleBarsHaveNamedButtons()
{
    const std::unique_ptr<QWidget> page(makeWindowsPage(nullptr));
    page->show();
    QStringList names;
    for (WindowControlButton *button : page->findChildren<WindowControlButton *>()) {
        const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(button);
        QVERIFY(known);
        QCOMPARE(known->role(), QAccessible::PushButton);
        if (button->isVisible())
            names << known->text(QAccessible::Name);
    }
    for (const char *name : {"Close", "Maximise", "Minimise"})
        QVERIFY2(names.contains(QLatin1String(name)), name);
}

void TestGalleryAccessibility::aControlWithoutNameIsFound()
{
    QWidget window;
    auto *edit = new QLineEdit(&window);
    window.show();
    QCOMPARE(allMissing(window).size(), 1);

    edit->setAccessibleName(QStringLiteral("Operator"));

    QCOMPARE(allMissing(window), QStringList());
}

QTEST_MAIN(TestGalleryAccessibility)
#include "tst_gallery_accessibility.moc"
