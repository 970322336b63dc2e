#include "vireling/widgets/icon_label.h"

#include <QAccessible>
#include <QCommonStyle>
#include <QHBoxLayout>
#include <QIconEngine>
#include <QtTest>

using namespace Vireling;

namespace {

/** What an icon was last asked for. */
struct IconRequest
{
    QSize size;
    QIcon::Mode mode = QIcon::Active;
    QIcon::State state = QIcon::Off;
};

/** Fills its size with red and remembers what was asked. */
class RecordingEngine : public QIconEngine
{
public:
    explicit RecordingEngine(IconRequest *target)
        : request(target)
    {}

    void paint(QPainter *, const QRect &, QIcon::Mode, QIcon::State) override {}
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        *request = {size, mode, state};
        QPixmap pixmap(size);
        pixmap.fill(Qt::red);
        return pixmap;
    }
    QIconEngine *clone() const override { return new RecordingEngine(*this); }

private:
    IconRequest *request;
};

/** A style with small icons of another size. */
class SmallIconStyle : public QCommonStyle
{
public:
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        return metric == PM_SmallIconSize ? 23 : QCommonStyle::pixelMetric(metric, option, widget);
    }
};

QRect redArea(const QImage &image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == QColor(Qt::red))
                area |= QRect(x, y, 1, 1);
    return area;
}

} // namespace

class TestIconLabel : public QObject
{
    Q_OBJECT

private slots:
    void unlessSetTheSizeIsTheStyles();
    void theHintIsTheIconAndItsMargins();
    void theLayoutIsToldOfANewIconAndSize();
    void theIconStandsInTheMiddleOfTheContents();
    void theIconIsAskedForAtItsSizeAndOn();
    void aDisabledLabelShowsADisabledIcon();
    void withoutAnIconItIsTheFrameAlone();
    void theIconIsDrawnOverTheFramesInside();
    void aShownWindowsRatioIsUsed();
    void itIsAGraphic();

private:
    IconRequest request;
    QIcon icon() { return QIcon(new RecordingEngine(&request)); }
};

void TestIconLabel::unlessSetTheSizeIsTheStyles()
{
    SmallIconStyle style;
    IconLabel label;
    label.setStyle(&style);
    QCOMPARE(label.iconSize(), QSize(23, 23));
    label.setIconSize({40, 30});
    QCOMPARE(label.iconSize(), QSize(40, 30));
    label.setIconSize(QSize());
    QCOMPARE(label.iconSize(), QSize(23, 23));
}

void TestIconLabel::theHintIsTheIconAndItsMargins()
{
    IconLabel label(icon());
    label.setIconSize({40, 30});
    label.setContentsMargins(1, 2, 3, 4);
    QCOMPARE(label.sizeHint(), QSize(44, 36));
    QCOMPARE(label.minimumSizeHint(), QSize(44, 36));
}

void TestIconLabel::theLayoutIsToldOfANewIconAndSize()
{
    QWidget window;
    QHBoxLayout layout(&window);
    layout.setContentsMargins({});
    IconLabel label;
    layout.addWidget(&label);
    QCOMPARE(window.sizeHint().height(), label.iconSize().height());
    label.setIconSize({70, 70});
    QCoreApplication::sendPostedEvents();
    QCOMPARE(window.sizeHint(), QSize(70, 70));

    // An icon has no size of its own, yet the layout is asked to look again.
    window.show();
    QCoreApplication::sendPostedEvents();
    struct LayoutRequests : QObject
    {
        int count = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::LayoutRequest ? 1 : 0;
            return false;
        }
    } requests;
    window.installEventFilter(&requests);
    label.setIcon(icon());
    QCoreApplication::sendPostedEvents();
    QVERIFY(requests.count > 0);
    QVERIFY(!label.icon().isNull());
}

void TestIconLabel::theIconStandsInTheMiddleOfTheContents()
{
    IconLabel label(icon());
    label.setIconSize({20, 10});
    label.setContentsMargins(40, 0, 0, 20);
    label.resize(100, 50);
    QCOMPARE(redArea(label.grab().toImage()), QRect(60, 10, 20, 10));
}

/** "Off" is the faded state of the toolkit's icons; a label is never off. */
void TestIconLabel::theIconIsAskedForAtItsSizeAndOn()
{
    IconLabel label(icon());
    label.setIconSize({20, 10});
    label.grab();
    QCOMPARE(request.size, QSize(20, 10));
    QCOMPARE(request.mode, QIcon::Normal);
    QCOMPARE(request.state, QIcon::On);
}

void TestIconLabel::aDisabledLabelShowsADisabledIcon()
{
    IconLabel label(icon());
    label.setEnabled(false);
    label.grab();
    QCOMPARE(request.mode, QIcon::Disabled);
}

void TestIconLabel::withoutAnIconItIsTheFrameAlone()
{
    IconLabel label;
    label.setFrameStyle(QFrame::Box | QFrame::Plain);
    label.resize(40, 40);
    QFrame frame;
    frame.setFrameStyle(QFrame::Box | QFrame::Plain);
    frame.resize(40, 40);
    QCOMPARE(label.grab().toImage(), frame.grab().toImage());
}

void TestIconLabel::theIconIsDrawnOverTheFramesInside()
{
    IconLabel label(icon());
    label.setFrameStyle(QFrame::Box | QFrame::Plain);
    label.setLineWidth(2);
    label.setIconSize({20, 20});
    QCOMPARE(label.sizeHint(), QSize(24, 24));
    label.resize(label.sizeHint());
    QCOMPARE(redArea(label.grab().toImage()), QRect(2, 2, 20, 20));
}

void TestIconLabel::aShownWindowsRatioIsUsed()
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QWidget window;
    IconLabel label(icon(), &window); // has no native window of its own
    label.setIconSize({20, 10});
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    label.grab();
    QCOMPARE(request.size, QSize(20, 10) * window.devicePixelRatioF());
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, false);
}

void TestIconLabel::itIsAGraphic()
{
    IconLabel label(icon());
    label.setAccessibleName("Warning");
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(interface);
    QCOMPARE(interface->role(), QAccessible::Graphic);
    QCOMPARE(interface->text(QAccessible::Name), QString("Warning"));
}

QTEST_MAIN(TestIconLabel)
#include "tst_icon_label.moc"
