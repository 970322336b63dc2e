#include "window_test_support.h"

#include "vireling/window/window_control.h"
#include "vireling/window/window_control_button.h"

#include <QAction>
#include <QMetaEnum>
#include <QtTest>

using namespace Vireling;

class TestWindowControl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installToolkit(); }

    void hasTheTextOfItsControl_data()
    {
        QTest::addColumn<int>("control");
        QTest::addColumn<QString>("text");
        QTest::newRow("close") << 0 << "Close";
        QTest::newRow("maximise") << 1 << "Maximise";
        QTest::newRow("minimise") << 2 << "Minimise";
        QTest::newRow("restore") << 3 << "Restore";
        QTest::newRow("beyond the list") << 4 << "Restore";
        QTest::newRow("far beyond") << 1000 << "Restore";
    }
    void hasTheTextOfItsControl()
    {
        QFETCH(int, control);
        QTEST(windowControlText(WindowControl(control)), "text");
    }

    void namesComeOutAsText()
    {
        const QMetaEnum names = QMetaEnum::fromType<WindowControl>();
        QCOMPARE(QByteArray(names.scope()) + "::" + names.name(),
                 QByteArray("Vireling::WindowControl"));
        QCOMPARE(names.keyCount(), 4);
        QCOMPARE(names.valueToKey(int(WindowControl::Maximise)), "Maximise");
    }

    void buttonShowsItsAction()
    {
        QAction action(QStringLiteral("Close"));
        QWidget bar;
        WindowControlButton button(WindowControl::Close, &action, &bar);
        QCOMPARE(button.text(), QStringLiteral("Close"));
        action.setText(QStringLiteral("Schliessen"));
        QCOMPARE(button.text(), QStringLiteral("Schliessen"));
        QCOMPARE(button.toolTip(), QStringLiteral("Schliessen"));
        QCOMPARE(button.property("control").value<WindowControl>(), WindowControl::Close);
    }

    void buttonHidesWithItsAction()
    {
        QAction action;
        QWidget bar;
        WindowControlButton button(WindowControl::Minimise, &action, &bar);
        bar.show();
        QVERIFY(button.isVisible());
        action.setVisible(false);
        QVERIFY(!button.isVisible());
        action.setVisible(true);
        QVERIFY(button.isVisible());
    }

    void buttonIsAsLargeAsTheStyleWantsItAndTakesNoFocus()
    {
        QAction action;
        WindowControlButton button(WindowControl::Restore, &action);
        QCOMPARE(button.sizeHint(), QSize(24, 24));
        QCOMPARE(button.minimumSizeHint(), QSize(24, 24));
        QCOMPARE(button.iconSize(), QSize(16, 16));
        QCOMPARE(button.focusPolicy(), Qt::NoFocus);
    }
};

QTEST_MAIN(TestWindowControl)
#include "tst_window_control.moc"
