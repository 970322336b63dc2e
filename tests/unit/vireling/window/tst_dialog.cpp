#include "window_test_support.h"

#include "vireling/widgets/translatable_widget.h"
#include "vireling/window/dialog.h"
#include "vireling/window/window_control.h"
#include "vireling/window/window_resize_area.h"
#include "vireling/window/window_title_bar.h"

#include <QAction>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

using namespace Vireling;

namespace {

/** A shown dialog with a field, which has the focus, and a button. */
struct FormDialog
{
    FormDialog()
    {
        auto *const layout = new QVBoxLayout(&dialog);
        layout->addWidget(edit);
        layout->addWidget(button);
        dialog.show();
        edit->setFocus();
    }

    Dialog dialog;
    QLineEdit *const edit = new QLineEdit;       // the dialog's
    QPushButton *const button = new QPushButton; // the dialog's
};

/** As screens derive from it. */
class Screen : public TranslatableWidget<Dialog, Ui::NoForm>
{
public:
    explicit Screen(QWidget *parent = nullptr)
        : TranslatableWidget(parent)
    {}
    int retranslations = 0;

protected:
    void retranslate() override { ++retranslations; }
};

/** Where a dialog of 200 x 100 comes up whose parent is there. */
QRect placeBeside(const QRect &place)
{
    QWidget parent;
    parent.setGeometry(place);
    parent.show();
    Dialog dialog(&parent);
    dialog.resize(200, 100);
    dialog.show();
    return dialog.geometry();
}

} // namespace

class TestDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installToolkit(); }

    void isAFramelessWindowThatCanBeClosed()
    {
        Dialog dialog;
        QVERIFY(dialog.isWindow());
        QVERIFY(dialog.windowFlags().testFlag(Qt::FramelessWindowHint));
        QCOMPARE(dialog.windowType(), Qt::Dialog);
        QVERIFY(dialog.isControlAvailable(WindowControl::Close));
        QVERIFY(dialog.isControlAvailable(WindowControl::Maximise));
        QVERIFY(!dialog.isControlAvailable(WindowControl::Minimise));
        QVERIFY(!dialog.isControlAvailable(WindowControl::Restore));
    }

    void takesTheFlagsItIsGiven()
    {
        Dialog dialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        QVERIFY(!dialog.isControlAvailable(WindowControl::Close));
        Dialog minimisable(nullptr, Qt::Window);
        QVERIFY(minimisable.isControlAvailable(WindowControl::Minimise));
    }

    void comesUpInTheMiddleOfItsParent()
    {
        QCOMPARE(placeBeside(QRect(200, 150, 400, 300)), QRect(300, 250, 200, 100));
    }

    void comesUpInTheMiddleOfTheScreenWithoutAParent()
    {
        Dialog dialog;
        dialog.resize(200, 100);
        dialog.show();
        const QRect screen = dialog.screen()->availableGeometry();
        QCOMPARE(dialog.pos(), QPoint((screen.width() - 200) / 2, (screen.height() - 100) / 2));
    }

    void staysOnTheScreenBesideAParentAtItsEdge()
    {
        QCOMPARE(placeBeside(QRect(0, 0, 40, 40)), QRect(0, 0, 200, 100));
    }

    void staysWhereItWasMoved()
    {
        Dialog dialog;
        dialog.setGeometry(10, 20, 200, 100);
        dialog.show();
        QCOMPARE(dialog.pos(), QPoint(10, 20));
    }

    void contentsLieBelowTheTitleBar()
    {
        Dialog dialog;
        auto *const layout = new QVBoxLayout(&dialog);
        auto *const content = new QWidget(&dialog);
        content->setMinimumSize(100, 50);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(content);
        dialog.resize(dialog.sizeHint());
        dialog.show();
        QCOMPARE(content->geometry().topLeft(), QPoint(1, 31));
        QCOMPARE(dialog.titleBar()->geometry(), QRect(1, 1, dialog.width() - 2, 30));
        QVERIFY(dialog.rect().marginsRemoved({1, 31, 1, 1}).contains(content->geometry()));
        QVERIFY(dialog.minimumSizeHint().height() >= 50 + 32);
    }

    void closingByTheTitleBarRejects()
    {
        Dialog dialog;
        dialog.show();
        QSignalSpy rejected(&dialog, &QDialog::rejected);
        dialog.titleBar()->controlAction(WindowControl::Close)->trigger();
        QCOMPARE(rejected.count(), 1);
        QVERIFY(!dialog.isVisible());
    }

    void mayBeDeletedByItsOwnCloseButton()
    {
        QPointer<Dialog> dialog = new Dialog;
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->show();
        QVERIFY(dialog->triggerControl(WindowControl::Close));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(dialog.isNull());
    }

    void mayEndWhileShown()
    {
        auto dialog = std::make_unique<Dialog>();
        dialog->setWindowTitle(QStringLiteral("Gone soon"));
        dialog->show();
        QPointer<WindowTitleBar> bar = dialog->titleBar();
        dialog.reset();
        QVERIFY(bar.isNull());
    }

    void titleBarTakesNoPartInTheFocusChain()
    {
        FormDialog form;
        QTest::keyClick(&form.dialog, Qt::Key_Tab);
        QCOMPARE(form.dialog.focusWidget(), form.button);
        QTest::keyClick(&form.dialog, Qt::Key_Tab);
        QCOMPARE(form.dialog.focusWidget(), form.edit);
    }

    void returnPressesTheDefaultButtonAndNoControl()
    {
        FormDialog form;
        QSignalSpy clicked(form.button, &QPushButton::clicked);
        QTest::keyClick(form.edit, Qt::Key_Return);
        QCOMPARE(clicked.count(), 1);
        QVERIFY(form.dialog.isVisible());
    }

    void screensRetranslateOnTopOfIt()
    {
        Screen screen;
        screen.ensurePolished();
        QCOMPARE(screen.retranslations, 1);
        QVERIFY(screen.titleBar());
    }

    void resizeAreaCoversItAll()
    {
        Dialog dialog;
        dialog.resize(320, 240);
        dialog.show();
        QCOMPARE(dialog.resizeArea()->geometry(), dialog.rect());
        QCOMPARE(dialog.frameWidth(), 1);
        dialog.setExtraResizeMargins({3, 3, 3, 3});
        QCOMPARE(dialog.resizeArea()->margins(), QMargins(4, 4, 4, 4));
    }
};

QTEST_MAIN(TestDialog)
#include "tst_dialog.moc"
