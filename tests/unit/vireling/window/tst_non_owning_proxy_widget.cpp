#include "vireling/window/non_owning_proxy_widget.h"

#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

using namespace Vireling;

/** A window with a content widget and a layout in which a proxy stands for it. */
class TestNonOwningProxyWidget : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        window = std::make_unique<QWidget>();
        window->resize(300, 200);
        content = new QWidget(window.get());
        content->setMinimumSize(50, 40);
        content->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        layout = new QVBoxLayout(window.get());
        layout->setContentsMargins(10, 20, 30, 40);
        proxy = new NonOwningProxyWidget(content);
        layout->addWidget(proxy);
        window->show();
    }
    void cleanup() { window.reset(); }

    void contentLiesWhereTheProxyIs()
    {
        QCOMPARE(content->geometry(), QRect(10, 20, 260, 140));
        window->resize(400, 300);
        QCOMPARE(content->geometry(), QRect(10, 20, 360, 240));
        layout->setContentsMargins(0, 0, 0, 0);
        layout->activate();
        QCOMPARE(content->geometry(), QRect(0, 0, 400, 300));
    }

    void asksForTheRoomOfTheContent()
    {
        QCOMPARE(proxy->minimumSizeHint(), QSize(50, 40));
        QCOMPARE(proxy->sizePolicy(), content->sizePolicy());
        QLabel label(QStringLiteral("Text"));
        NonOwningProxyWidget other(&label);
        QCOMPARE(other.sizeHint(), label.sizeHint());
    }

    void contentIsShownWithTheProxy()
    {
        proxy->hide();
        QVERIFY(!content->isVisible());
        proxy->show();
        QVERIFY(content->isVisible());
    }

    void contentOutlivesTheProxy()
    {
        delete proxy;
        QCOMPARE(content->parentWidget(), window.get());
        QVERIFY(content->isVisible());
        window->resize(320, 220);
    }

    void proxyOutlivesTheContent()
    {
        delete content;
        QCOMPARE(proxy->content(), nullptr);
        QCOMPARE(proxy->sizeHint(), QSize(0, 0));
        QCOMPARE(proxy->minimumSizeHint(), QSize(0, 0));
        window->resize(320, 220);
        proxy->hide();
    }

    void leavesThePointerToTheContent() { QCOMPARE(window->childAt(100, 100), content); }

    void standsForNothingToo()
    {
        NonOwningProxyWidget none(nullptr);
        QCOMPARE(none.sizeHint(), QSize(0, 0));
    }

    void asksAnewWhenTheContentsLayoutChanges()
    {
        auto *const inner = new QVBoxLayout(content);
        auto *const label = new QLabel;
        inner->addWidget(label);
        QCoreApplication::sendPostedEvents();
        label->setMinimumHeight(500);
        QTRY_VERIFY(window->height() >= 500);
    }

private:
    std::unique_ptr<QWidget> window;
    QWidget *content = nullptr;
    QVBoxLayout *layout = nullptr;
    NonOwningProxyWidget *proxy = nullptr;
};

QTEST_MAIN(TestNonOwningProxyWidget)
#include "tst_non_owning_proxy_widget.moc"
