#include "window_test_support.h"

#include "vireling/window/message_box_frames.h"
#include "vireling/window/window_title_bar.h"

#include <QAction>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <QtTest>

#include <memory>

using namespace Vireling;

namespace {

constexpr auto none = QMessageBox::NoButton;

/** A box by what decides how it can be answered. */
struct Answers
{
    const char *name;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton byDefault = none;
    QMessageBox::StandardButton escape = none; // set by the caller, else Qt's choice
    const char *details = "";
};

const Answers answers[]{
    {"no button", none},
    {"ok", QMessageBox::Ok},
    {"yes or no", QMessageBox::Yes | QMessageBox::No},
    {"yes or rather no", QMessageBox::Yes | QMessageBox::No, QMessageBox::No},
    {"yes or cancel", QMessageBox::Yes | QMessageBox::Cancel},
    {"yes, no or cancel", QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel},
    {"two that reject", QMessageBox::Abort | QMessageBox::Close},
    {"two kinds of no", QMessageBox::No | QMessageBox::NoToAll},
    {"two kinds of yes", QMessageBox::Yes | QMessageBox::YesToAll},
    {"an escape by hand", QMessageBox::Yes | QMessageBox::YesToAll, none, QMessageBox::Yes},
    {"details", QMessageBox::Ok, none, none, "In /dev"},
    {"details alone", none, none, none, "In /dev"},
    {"details of two", QMessageBox::Yes | QMessageBox::YesToAll, none, none, "In /dev"},
};

enum class Way
{
    Escape,
    Return,
    Close
};

struct Outcome
{
    bool open = false;
    int result = 0;
    QMessageBox::StandardButton clicked = none;

    bool operator==(const Outcome &other) const
    {
        return open == other.open && result == other.result && clicked == other.clicked;
    }
};

/** As the program makes them: a question with a parent or without. */
std::unique_ptr<QMessageBox> makeBox(const Answers &given, QWidget *parent = nullptr)
{
    auto box = std::make_unique<QMessageBox>(QMessageBox::Question, QStringLiteral("File exists"),
                                             QStringLiteral("Do you want to overwrite it?"),
                                             given.buttons, parent);
    if (given.byDefault)
        box->setDefaultButton(given.byDefault);
    if (given.escape)
        box->setEscapeButton(given.escape);
    box->setDetailedText(QString::fromUtf8(given.details));
    return box;
}

std::unique_ptr<QMessageBox> makeBox(QWidget *parent = nullptr)
{
    return makeBox(answers[2], parent);
}

Outcome outcomeOf(const Answers &given, Way way)
{
    const auto box = makeBox(given);
    box->show();
    QWidget *const focused = box->focusWidget() ? box->focusWidget() : box.get();
    if (way == Way::Close)
        box->close();
    else
        QTest::keyClick(focused, way == Way::Escape ? Qt::Key_Escape : Qt::Key_Return);
    return {box->isVisible(), box->result(), box->standardButton(box->clickedButton())};
}

QVector<Outcome> outcomesOf(const Answers &given)
{
    return {outcomeOf(given, Way::Escape), outcomeOf(given, Way::Return),
            outcomeOf(given, Way::Close)};
}

QPoint middleOf(const QRect &around, const QSize &size)
{
    const QSize room = around.size() - size;
    return around.topLeft() + QPoint(room.width() / 2, room.height() / 2);
}

WindowTitleBar *barOf(const QMessageBox &box)
{
    return box.findChild<WindowTitleBar *>();
}

bool offersToClose(const QMessageBox &box)
{
    return barOf(box)->controlButton(WindowControl::Close)->isVisible();
}

} // namespace

class TestMessageBoxFrames : public QObject
{
    Q_OBJECT

private slots:
    /** What boxes do without a frame is seen first; then they have one. */
    void initTestCase()
    {
        installToolkit();
        for (const Answers &given : answers)
            unframed << outcomesOf(given);
        shownBefore->show();
        shownBefore->hide();
        frameMessageBoxes();
    }

    void theTitleIsShownAndFollows()
    {
        const auto box = makeBox();
        box->show();
        QVERIFY(barOf(*box)->isVisible());
        QCOMPARE(barOf(*box)->title(), QStringLiteral("File exists"));
        box->setWindowTitle(QStringLiteral("Datei vorhanden"));
        QCOMPARE(barOf(*box)->title(), QStringLiteral("Datei vorhanden"));
        QCOMPARE(box->windowTitle(), QStringLiteral("Datei vorhanden"));
    }

    /** The native window exists before the frame does: it must be told as well. */
    void noOtherFrameIsAskedFor()
    {
        QWidget parent;
        parent.show();
        for (QWidget *of : {static_cast<QWidget *>(nullptr), &parent}) {
            const auto box = makeBox(of);
            box->setWindowModality(Qt::ApplicationModal);
            box->show();
            QVERIFY(box->isVisible());
            QVERIFY(box->windowFlags().testFlag(Qt::FramelessWindowHint));
            QVERIFY(box->windowHandle()->flags().testFlag(Qt::FramelessWindowHint));
            QVERIFY(box->windowHandle()->isVisible());
            QVERIFY(box->isModal());
            QCOMPARE(box->windowType(), Qt::Dialog);
        }
    }

    void contentsLieBelowTheTitleBar()
    {
        const auto box = makeBox();
        box->show();
        QCOMPARE(barOf(*box)->geometry(), QRect(1, 1, box->width() - 2, 30));
        const QRect inside = box->rect().marginsRemoved({1, 31, 1, 1});
        for (const QWidget *part : box->findChildren<QWidget *>(QRegularExpression("^qt_msgbox")))
            QVERIFY2(inside.contains(part->geometry()), qPrintable(part->objectName()));
        const auto *text = box->findChild<QLabel *>(QStringLiteral("qt_msgbox_label"));
        QVERIFY(text->height() >= text->heightForWidth(text->width()));
    }

    void itIsAnsweredAsWithoutAFrame_data()
    {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(answers)); ++row)
            QTest::newRow(answers[row].name) << row;
    }

    void itIsAnsweredAsWithoutAFrame()
    {
        QFETCH(int, row);
        QCOMPARE(outcomesOf(answers[row]), unframed.at(row));
    }

    void theFrameClosesItWhereEscapeWould_data() { itIsAnsweredAsWithoutAFrame_data(); }

    void theFrameClosesItWhereEscapeWould()
    {
        QFETCH(int, row);
        const Outcome escaped = unframed.at(row).first();
        const auto box = makeBox(answers[row]);
        for (int time = 0; time < 2; ++time) {
            box->show();
            QCOMPARE(offersToClose(*box), !escaped.open);
            QVERIFY(!barOf(*box)->controlButton(WindowControl::Maximise)->isVisible());
            barOf(*box)->controlAction(WindowControl::Close)->trigger();
            QCOMPARE(box->isVisible(), escaped.open);
            QCOMPARE(box->standardButton(box->clickedButton()), escaped.clicked);
            box->hide();
        }
    }

    void callersGetTheAnswer()
    {
        QTimer::singleShot(0, this, [] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            barOf(*box)->controlAction(WindowControl::Close)->trigger();
        });
        QCOMPARE(QMessageBox::question(nullptr, QStringLiteral("Delete File"),
                                       QStringLiteral("Are you sure?")),
                 QMessageBox::No);
    }

    void theFocusIsOnTheDefaultButtonAndStaysOnButtons()
    {
        const auto box = makeBox(answers[3]);
        box->show();
        QCOMPARE(box->focusWidget(), box->button(QMessageBox::No));
        QTest::keyClick(box->focusWidget(), Qt::Key_Tab);
        QCOMPARE(box->focusWidget(), box->button(QMessageBox::Yes));
        QTest::keyClick(box->focusWidget(), Qt::Key_Tab);
        QCOMPARE(box->focusWidget(), box->button(QMessageBox::No));
    }

    void itComesUpInTheMiddleOfItsParent()
    {
        QWidget parent;
        parent.setGeometry(100, 50, 601, 401);
        parent.show();
        const auto box = makeBox(&parent);
        box->show();
        QCOMPARE(box->geometry().topLeft(), middleOf(parent.geometry(), box->size()));
    }

    void itComesUpInTheMiddleOfTheScreenWithoutAParent()
    {
        const auto box = makeBox();
        box->show();
        QCOMPARE(box->geometry().topLeft(),
                 middleOf(box->screen()->availableGeometry(), box->size()));
    }

    void aLongNameStaysOnTheScreen()
    {
        QWidget parent;
        parent.setGeometry(700, 700, 90, 90);
        parent.show();
        const auto box = makeBox(&parent);
        box->setText(QString(255, QLatin1Char('W')));
        box->show();
        QVERIFY(box->screen()->availableGeometry().contains(box->geometry()));
    }

    void itStaysInTheMiddleWhenItGrows()
    {
        const auto box = makeBox();
        box->show();
        const QSize before = box->size();
        box->setText(QStringLiteral("One\nTwo\nThree\nFour\nFive\nSix\nSeven\nEight"));
        QTRY_VERIFY(box->height() > before.height());
        QCOMPARE(box->geometry().topLeft(),
                 middleOf(box->screen()->availableGeometry(), box->size()));
    }

    void itStaysWhereItWasMoved()
    {
        const auto box = makeBox();
        box->move(10, 20);
        box->show();
        QCOMPARE(box->pos(), QPoint(10, 20));
        const auto dragged = makeBox();
        dragged->show();
        dragged->move(30, 40);
        const QSize before = dragged->size();
        dragged->setText(QStringLiteral("One\nTwo\nThree\nFour\nFive\nSix\nSeven\nEight"));
        QTRY_VERIFY(dragged->height() > before.height());
        QCOMPARE(dragged->pos(), QPoint(30, 40));
    }

    /** An X server's answer to the first size comes when the box has its own already. */
    void aLateWordOfAnOldSizeIsNotKept()
    {
        const auto box = makeBox();
        box->show();
        const QSize before = box->size();
        box->windowHandle()->resize(100, 30);
        QTRY_COMPARE(box->size(), QSize(100, 30));
        QCOMPARE(box->minimumSize(), before);
        box->windowHandle()->resize(before);
        QTRY_COMPARE(box->size(), before);
        QCOMPARE(box->maximumSize(), before);
    }

    void itIsPlacedAnewWhenShownAgain()
    {
        QWidget parent;
        parent.setGeometry(100, 50, 601, 401);
        parent.show();
        const auto box = makeBox(&parent);
        box->show();
        box->hide();
        parent.move(120, 80);
        box->show();
        QCOMPARE(box->geometry().topLeft(), middleOf(parent.geometry(), box->size()));
    }

    void theWholeTitleIsSeen()
    {
        const auto box = makeBox();
        box->setWindowTitle(QStringLiteral("The crash report is not saved on the processor"));
        box->setText(QStringLiteral("No."));
        box->show();
        QVERIFY(barOf(*box)->sizeHint().width() <= barOf(*box)->width());
    }

    /** Somebody may ask for the size of a box that has no native window yet. */
    void itMayBeMeasuredFirst()
    {
        const auto box = makeBox();
        const QSize hint = box->sizeHint();
        QVERIFY(barOf(*box));
        box->show();
        QCOMPARE(box->size(), hint);
        QVERIFY(box->windowHandle()->flags().testFlag(Qt::FramelessWindowHint));
    }

    void aPartOfAWindowHasNoFrame()
    {
        QWidget page;
        auto *const box = makeBox().release();
        auto *const layout = new QVBoxLayout(&page);
        box->setWindowFlags(Qt::Widget);
        layout->addWidget(box); // which makes it the page's
        page.show();
        QVERIFY(box->isVisible());
        QVERIFY(!barOf(*box));
    }

    void oneShownBeforeStaysAsItIs()
    {
        shownBefore->show();
        QVERIFY(shownBefore->isVisible());
        QVERIFY(!barOf(*shownBefore));
        shownBefore.reset();
    }

    void otherDialogsStayAsTheyAre()
    {
        QDialog dialog;
        dialog.show();
        QVERIFY(!dialog.windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(dialog.findChildren<WindowTitleBar *>().isEmpty());
    }

    void nothingStaysWhenTheBoxGoes()
    {
        const int before = qApp->findChildren<QObject *>().size();
        auto box = makeBox();
        box->show();
        const auto parts = box->findChildren<QObject *>();
        const QVector<QPointer<QObject>> guards(parts.begin(), parts.end());
        box.reset(); // while it is shown
        for (const QPointer<QObject> &guard : guards)
            QVERIFY(guard.isNull());
        QCOMPARE(qApp->findChildren<QObject *>().size(), before);
    }

private:
    QVector<QVector<Outcome>> unframed; // by row of answers, then by way
    std::unique_ptr<QMessageBox> shownBefore =
        std::make_unique<QMessageBox>(QMessageBox::Information, QString(), QString());
};

QTEST_MAIN(TestMessageBoxFrames)
#include "tst_message_box_frames.moc"
