#include "vireling/widgets/translatable_widget.h"

#include <QDialog>
#include <QLineEdit>
#include <QtTest>

using namespace Vireling;

namespace {

/** As Qt's designer would generate it. */
class Form
{
public:
    QLineEdit *field = nullptr;

    void setupUi(QWidget *widget)
    {
        field = new QLineEdit(widget);
        retranslateUi(widget);
    }

    void retranslateUi(QWidget *widget)
    {
        widget->setWindowTitle(QStringLiteral("Title %1").arg(++retranslations));
        field->setPlaceholderText("Name");
    }

    int retranslations = 0;
};

class FormScreen : public TranslatableWidget<QDialog, Form>
{
public:
    FormScreen() { ui().setupUi(this); }
    int formRetranslations() { return ui().retranslations; }
};

/** A screen without a form that notes what happens in which order. */
class PlainScreen : public TranslatableWidget<QWidget, Ui::NoForm>
{
public:
    explicit PlainScreen(QWidget *parent = nullptr)
        : TranslatableWidget(parent)
    {}

    QStringList log;
    bool blockedMeanwhile = false;

protected:
    void retranslate() override
    {
        log += "retranslate";
        blockedMeanwhile = signalsBlocked();
        setWindowTitle(QString::number(log.size())); // emits windowTitleChanged unless blocked
    }

    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::LanguageChange)
            log += "changeEvent";
        QWidget::changeEvent(event);
    }
};

int countOf(const PlainScreen &screen)
{
    return screen.log.count("retranslate");
}

void send(QObject &object, QEvent::Type type)
{
    QEvent event(type);
    QCoreApplication::sendEvent(&object, &event);
}

} // namespace

class TestTranslatableWidget : public QObject
{
    Q_OBJECT

private slots:
    void textsAreSetOnceWhenPolished();
    void textsAreSetAgainWhenTheyMayDiffer_data();
    void textsAreSetAgainWhenTheyMayDiffer();
    void otherEventsLeaveTextsAlone();
    void anInstalledTranslatorIsFollowed();
    void callbacksFollowInTheOrderOfRegistration();
    void theBaseHandlesTheEventAfterwards();
    void nothingIsEmittedMeanwhile();
    void signalsAreBlockedForCallbacksToo();
    void theStateOfBlockingIsRestored();
    void aFormIsRetranslated();
};

void TestTranslatableWidget::textsAreSetOnceWhenPolished()
{
    PlainScreen screen;
    QCOMPARE(countOf(screen), 0);
    screen.show();
    QCOMPARE(countOf(screen), 1);
    screen.hide();
    screen.show();
    QCOMPARE(countOf(screen), 1);
}

void TestTranslatableWidget::textsAreSetAgainWhenTheyMayDiffer_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("polish") << int(QEvent::Polish);
    QTest::newRow("language") << int(QEvent::LanguageChange);
    QTest::newRow("locale") << int(QEvent::LocaleChange);
}

void TestTranslatableWidget::textsAreSetAgainWhenTheyMayDiffer()
{
    QFETCH(int, type);
    PlainScreen screen;
    int callbacks = 0;
    screen.addRetranslation([&] { ++callbacks; });
    send(screen, QEvent::Type(type));
    QCOMPARE(countOf(screen), 1);
    QCOMPARE(callbacks, 1);
}

void TestTranslatableWidget::otherEventsLeaveTextsAlone()
{
    PlainScreen screen;
    for (const QEvent::Type type : {QEvent::FontChange, QEvent::PaletteChange, QEvent::StyleChange,
                                    QEvent::LayoutDirectionChange})
        send(screen, type);
    QCOMPARE(countOf(screen), 0);
}

void TestTranslatableWidget::anInstalledTranslatorIsFollowed()
{
    PlainScreen screen;
    screen.show();
    PlainScreen child(&screen);
    child.ensurePolished();
    const int before = countOf(screen);
    class : public QTranslator
    {
        bool isEmpty() const override { return false; }
    } translator;
    QCoreApplication::installTranslator(&translator);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(countOf(screen), before + 1);
    QCOMPARE(countOf(child), 2);
    QCoreApplication::removeTranslator(&translator);
}

void TestTranslatableWidget::callbacksFollowInTheOrderOfRegistration()
{
    PlainScreen screen;
    screen.addRetranslation([&] { screen.log += "first"; });
    screen.addRetranslation([&] { screen.log += "second"; });
    send(screen, QEvent::Polish);
    QCOMPARE(screen.log, (QStringList{"retranslate", "first", "second"}));
}

void TestTranslatableWidget::theBaseHandlesTheEventAfterwards()
{
    PlainScreen screen;
    screen.addRetranslation([&] { screen.log += "callback"; });
    send(screen, QEvent::LanguageChange);
    QCOMPARE(screen.log, (QStringList{"retranslate", "callback", "changeEvent"}));
}

void TestTranslatableWidget::nothingIsEmittedMeanwhile()
{
    PlainScreen screen;
    QSignalSpy titleChanges(&screen, &QWidget::windowTitleChanged);
    send(screen, QEvent::LanguageChange);
    QCOMPARE(screen.windowTitle(), QString("1"));
    QCOMPARE(titleChanges.count(), 0);
    screen.setWindowTitle("by hand");
    QCOMPARE(titleChanges.count(), 1);
}

void TestTranslatableWidget::signalsAreBlockedForCallbacksToo()
{
    PlainScreen screen;
    bool blocked = false;
    screen.addRetranslation([&] { blocked = screen.signalsBlocked(); });
    send(screen, QEvent::Polish);
    QVERIFY(screen.blockedMeanwhile);
    QVERIFY(blocked);
}

void TestTranslatableWidget::theStateOfBlockingIsRestored()
{
    PlainScreen screen;
    for (const bool blocked : {true, false}) {
        screen.blockSignals(blocked);
        send(screen, QEvent::LanguageChange);
        QCOMPARE(screen.signalsBlocked(), blocked);
    }
}

void TestTranslatableWidget::aFormIsRetranslated()
{
    FormScreen screen;
    QCOMPARE(screen.formRetranslations(), 1); // by its set-up
    send(screen, QEvent::LanguageChange);
    QCOMPARE(screen.formRetranslations(), 2);
    QCOMPARE(screen.windowTitle(), QString("Title 2"));
}

QTEST_MAIN(TestTranslatableWidget)
#include "tst_translatable_widget.moc"
