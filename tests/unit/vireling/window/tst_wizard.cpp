#include "window_test_support.h"

#include "vireling/window/window_control.h"
#include "vireling/window/window_title_bar.h"
#include "vireling/window/wizard.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

using namespace Vireling;

namespace {

QWizardPage *page(const QString &title)
{
    auto *const made = new QWizardPage;
    made->setTitle(title);
    auto *const layout = new QVBoxLayout(made);
    layout->addWidget(new QLabel(QStringLiteral("Text of the page")));
    auto *const button = new QPushButton(QStringLiteral("A button of the page"));
    button->setObjectName(QStringLiteral("QT_WIZARD_lookalike"));
    layout->addWidget(button);
    return made;
}

} // namespace

/** A shown wizard of two pages. */
class TestWizard : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installToolkit(); }

    void init()
    {
        wizard = std::make_unique<Wizard>();
        wizard->addPage(page(QStringLiteral("First")));
        wizard->addPage(page(QStringLiteral("Second")));
    }
    void cleanup() { wizard.reset(); }

    void isAFramelessWindow()
    {
        QVERIFY(wizard->windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(wizard->isControlAvailable(WindowControl::Close));
    }

    void drawsNoFrameOfItsOwn()
    {
        QCOMPARE(wizard->property("_q_wizard_vista_off"), QVariant(true));
    }

    void knowsItsOwnButtons()
    {
        wizard->show();
        const QList<QAbstractButton *> buttons = wizard->wizardButtons();
        for (const QWizard::WizardButton which : {QWizard::BackButton, QWizard::NextButton,
                                                  QWizard::FinishButton, QWizard::CancelButton})
            QVERIFY(buttons.contains(wizard->button(which)));
        for (const QAbstractButton *button : buttons)
            QVERIFY(button->text() != QStringLiteral("A button of the page"));
        QVERIFY(!buttons.contains(wizard->titleBar()->controlButton(WindowControl::Close)));
    }

    void everythingLiesBelowTheTitleBar_data()
    {
        QTest::addColumn<int>("wizardStyle");
        QTest::newRow("classic") << int(QWizard::ClassicStyle);
        QTest::newRow("modern") << int(QWizard::ModernStyle);
    }
    void everythingLiesBelowTheTitleBar()
    {
        QFETCH(int, wizardStyle);
        wizard->setWizardStyle(QWizard::WizardStyle(wizardStyle));
        wizard->show();
        const QRect inside = wizard->rect().marginsRemoved(wizard->contentsMargins());
        QCOMPARE(inside.top(), 31);
        verifyInside(inside);
        wizard->resize(700, 500);
        verifyInside(wizard->rect().marginsRemoved(wizard->contentsMargins()));
    }

    void theTitleBarIsOnTop()
    {
        wizard->show();
        QWidget *const under = wizard->childAt(200, 15);
        QVERIFY(under);
        QVERIFY(under == wizard->titleBar() || wizard->titleBar()->isAncestorOf(under));
    }

    void contentsReachUpWhereTheTitleBarIsHidden()
    {
        wizard->show();
        const int before = wizard->currentPage()->mapTo(wizard.get(), QPoint(0, 0)).y();
        wizard->titleBar()->hide();
        QCoreApplication::sendPostedEvents();
        QCOMPARE(wizard->currentPage()->mapTo(wizard.get(), QPoint(0, 0)).y(), before - 30);
    }

    void isLargeEnoughForContentsAndTitleBar()
    {
        wizard->currentPage();
        wizard->show();
        const int bare = [] {
            QWizard plain;
            plain.addPage(page(QStringLiteral("First")));
            plain.addPage(page(QStringLiteral("Second")));
            plain.show();
            return plain.minimumHeight();
        }();
        QCOMPARE(wizard->minimumHeight(), bare + 32);
    }

    void buttonsOfTheRowAreEquallyWide()
    {
        wizard->setButtonText(QWizard::FinishButton, QStringLiteral("Finish this long affair"));
        wizard->show();
        QCOMPARE(wizard->button(QWizard::NextButton)->width(),
                 wizard->button(QWizard::CancelButton)->width());
        const int width = wizard->button(QWizard::CancelButton)->width();
        wizard->next();
        QCoreApplication::sendPostedEvents();
        QCOMPARE(wizard->button(QWizard::FinishButton)->width(), width);
        QCOMPARE(wizard->button(QWizard::BackButton)->width(), width);
    }

    void buttonsOfPagesAreLeftAlone()
    {
        wizard->show();
        for (QAbstractButton *button : wizard->currentPage()->findChildren<QAbstractButton *>())
            QCOMPARE(button->minimumWidth(), 0);
    }

    void mayEndWhileShown()
    {
        wizard->show();
        QPointer<WindowTitleBar> bar = wizard->titleBar();
        wizard.reset();
        QVERIFY(bar.isNull());
    }

private:
    void verifyInside(const QRect &inside) const
    {
        QCoreApplication::sendPostedEvents();
        const auto check = [&](const QWidget *widget) {
            return inside.contains(
                QRect(widget->mapTo(wizard.get(), QPoint(0, 0)), widget->size()));
        };
        QVERIFY(check(wizard->currentPage()));
        for (const QAbstractButton *button : wizard->wizardButtons())
            QVERIFY(!button->isVisible() || check(button));
    }

    std::unique_ptr<Wizard> wizard;
};

QTEST_MAIN(TestWizard)
#include "tst_wizard.moc"
