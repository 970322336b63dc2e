#include "crash_reporter/safe_shutdown_widget.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"
#include "vireling/widgets/static_svg_widget.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

#include <cmath>

using Vireling::StaticSvgWidget;

namespace {

const QList<QSize> screens{{800, 480}, {1024, 768}, {1280, 800}, {1920, 1080}, {1080, 1920}};

/** The parts of the screen, found where they have to stand. */
struct Parts
{
    explicit Parts(const SafeShutdownWidget &screen)
        : columns(qobject_cast<QHBoxLayout *>(screen.layout()))
    {
        box = widgetAt(0, 1);
        message = qobject_cast<QLabel *>(widgetAt(1, 0));
        productLogo = qobject_cast<StaticSvgWidget *>(widgetAt(2, 1));
        makerLogo = box ? box->findChild<StaticSvgWidget *>() : nullptr;
    }

    QWidget *widgetAt(int column, int index) const
    {
        QLayoutItem *item = columns->itemAt(column)->layout()->itemAt(index);
        return item ? item->widget() : nullptr;
    }

    QHBoxLayout *columns;
    QWidget *box = nullptr;
    StaticSvgWidget *makerLogo = nullptr;
    QLabel *message = nullptr;
    StaticSvgWidget *productLogo = nullptr;
};

QRect onScreen(const QWidget &widget)
{
    return {widget.mapTo(widget.window(), QPoint()), widget.size()};
}

/** Answers only in the context that the screen's text has to be looked up in. */
class WidgetContextTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        if (qstrcmp(context, "QWidget") == 0 &&
            qstrcmp(source, "It is now safe to switch off your\n%1 System Controller") == 0)
            return QStringLiteral("%1: aus");
        return QString();
    }
};

/** The grey at the middle of a pixel: 170 up to 0.73 of the radius, then down to black. */
double expectedGrey(const QPoint &pixel, const QSize &size)
{
    const double x = pixel.x() + 0.5 - size.width() * 0.5;
    const double y = pixel.y() + 0.5 - size.height() * 3.0;
    const double place = std::sqrt(x * x + y * y) / (size.height() * 3.0);
    if (place <= 0.73)
        return 170;
    return place >= 1 ? 0 : 170 * (1 - place) / (1 - 0.73);
}

/** The gradient's values at a grid of pixels that no child covers; empty when all are right. */
QString gradientProblems(SafeShutdownWidget &screen)
{
    const QImage image = screen.grab().toImage();
    const qreal ratio = image.devicePixelRatio();
    const QSize size = screen.size();
    constexpr int tolerance = 2; // of Qt's table of 1024 colours, and of rounding
    QString problems;
    for (int y = 0; y < size.height(); y += 23) {
        for (int x = 0; x < size.width(); x += 29) {
            if (screen.childAt(x, y))
                continue;
            const QColor colour = image.pixelColor((QPointF(x, y) * ratio).toPoint());
            const double grey = expectedGrey({x, y}, size);
            if (colour.red() != colour.green() || colour.red() != colour.blue() ||
                std::abs(colour.red() - grey) > tolerance)
                problems += QStringLiteral("%1,%2: %3 instead of %4\n")
                                .arg(x)
                                .arg(y)
                                .arg(colour.name())
                                .arg(grey);
        }
    }
    return problems;
}

void show(SafeShutdownWidget &screen, const QSize &size)
{
    screen.resize(size);
    screen.show();
    QCoreApplication::processEvents();
}

void addScreenRows()
{
    QTest::addColumn<QSize>("size");
    for (const QSize &size : screens)
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
}

} // namespace

class SafeShutdownWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void threeColumnsWithinTheirMargins();
    void theLogosHaveFixedSizes();
    void logosAreRoundedAndTheBoxIsCut();
    void theMessageIsYellowInEveryGroup();
    void theMessageNamesTheDevice_data();
    void theMessageNamesTheDevice();
    void theTextIsTranslatedAmongThoseOfWidgets();
    void theMessageIsHiddenAtFirstAndKeepsItsPlace();
    void revealingTheMessageMovesNothing_data() { addScreenRows(); }
    void revealingTheMessageMovesNothing();
    void theScreenFillsWhatItGets_data() { addScreenRows(); }
    void theScreenFillsWhatItGets();
    void theGroundFollowsTheFormula_data() { addScreenRows(); }
    void theGroundFollowsTheFormula();
    void resizingRecomputesTheGround();
    void onlyTheProgramClosesTheScreen();
};

void SafeShutdownWidgetTest::init()
{
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
}

void SafeShutdownWidgetTest::threeColumnsWithinTheirMargins()
{
    const SafeShutdownWidget screen;
    const Parts parts(screen);
    QVERIFY(parts.columns && parts.box && parts.makerLogo && parts.message && parts.productLogo);
    QCOMPARE(parts.columns->contentsMargins(), QMargins(50, 50, 50, 50));
    QCOMPARE(parts.columns->count(), 3);
    for (int column = 0; column < 3; ++column) {
        QCOMPARE(parts.columns->stretch(column), 0);
        QCOMPARE(parts.columns->itemAt(column)->layout()->contentsMargins(), QMargins());
    }
    for (int column : {0, 2}) {
        const QLayout *layout = parts.columns->itemAt(column)->layout();
        QVERIFY(layout->itemAt(0)->spacerItem());
        QCOMPARE(layout->itemAt(1)->alignment(), Qt::Alignment(Qt::AlignBottom));
    }
}

void SafeShutdownWidgetTest::theLogosHaveFixedSizes()
{
    const SafeShutdownWidget screen;
    const Parts parts(screen);
    const auto fitted = [](const StaticSvgWidget &logo, int side) {
        const QSizeF size =
            QSizeF(logo.defaultSize()).scaled(QSizeF(side, side), Qt::KeepAspectRatio);
        return QSize(qRound(size.width()), qRound(size.height()));
    };
    for (const QWidget *fixed : {parts.box, static_cast<QWidget *>(parts.makerLogo),
                                 static_cast<QWidget *>(parts.productLogo)})
        QCOMPARE(fixed->minimumSize(), fixed->maximumSize());
    QCOMPARE(parts.makerLogo->size(), fitted(*parts.makerLogo, 200));
    QCOMPARE(parts.productLogo->minimumSize(), fitted(*parts.productLogo, 300));
    QCOMPARE(parts.makerLogo->width(), 200);
    QCOMPARE(parts.productLogo->minimumWidth(), 300);
    QCOMPARE(parts.box->width(), 300);
    QCOMPARE(parts.makerLogo->pos(), QPoint());
}

void SafeShutdownWidgetTest::logosAreRoundedAndTheBoxIsCut()
{
    // Artwork whose height does not come out even: 300 x 100 fits as 200 x 66.67.
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("images")));
    for (const char *name : {"tovask_logo.svg", "r4_logo.svg"}) {
        QFile file(folder.filePath(QStringLiteral("images/") + QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"300\" height=\"100\"/>");
    }
    QDir::setSearchPaths(QStringLiteral("vireling"), {folder.path()});
    const SafeShutdownWidget screen;
    const Parts parts(screen);
    QCOMPARE(parts.makerLogo->size(), QSize(200, 67));
    QCOMPARE(parts.box->size(), QSize(300, 66));
    QCOMPARE(parts.productLogo->minimumSize(), QSize(300, 100));
}

void SafeShutdownWidgetTest::theMessageIsYellowInEveryGroup()
{
    const SafeShutdownWidget screen;
    const QLabel *message = Parts(screen).message;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QBrush brush = message->palette().brush(group, QPalette::WindowText);
        QCOMPARE(brush.color(), QColor(240, 226, 80));
        QCOMPARE(brush.style(), Qt::SolidPattern);
    }
    QCOMPARE(message->alignment(), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(message->font().family(), QStringLiteral("Titillium Web"));
    QCOMPARE(message->font().weight(), 50);
    QCOMPARE(message->font().pointSizeF(), 12.0);
}

void SafeShutdownWidgetTest::theMessageNamesTheDevice_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("model") << "R4-220"
                           << "It is now safe to switch off your\nR4-220 System Controller";
    QTest::newRow("unknown") << "Unknown"
                             << "It is now safe to switch off your\nUnknown System Controller";
    QTest::newRow("empty") << QString() << "It is now safe to switch off your\n System Controller";
}

void SafeShutdownWidgetTest::theMessageNamesTheDevice()
{
    QFETCH(QString, name);
    SafeShutdownWidget screen;
    screen.setDeviceName(name);
    QTEST(Parts(screen).message->text(), "text");
}

void SafeShutdownWidgetTest::theTextIsTranslatedAmongThoseOfWidgets()
{
    WidgetContextTranslator translator;
    QCoreApplication::installTranslator(&translator);
    SafeShutdownWidget screen;
    screen.setDeviceName(QStringLiteral("R4-220"));
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(Parts(screen).message->text(), QStringLiteral("R4-220: aus"));
}

void SafeShutdownWidgetTest::theMessageIsHiddenAtFirstAndKeepsItsPlace()
{
    SafeShutdownWidget screen;
    show(screen, {1280, 800});
    const QLabel *message = Parts(screen).message;
    QVERIFY(message->isHidden());
    QVERIFY(message->sizePolicy().retainSizeWhenHidden());
    screen.setMessageVisible(true);
    QVERIFY(message->isVisible());
    screen.setMessageVisible(false);
    QVERIFY(message->isHidden());
}

void SafeShutdownWidgetTest::revealingTheMessageMovesNothing()
{
    QFETCH(QSize, size);
    SafeShutdownWidget screen;
    screen.setDeviceName(QStringLiteral("R4-220"));
    show(screen, size);
    const Parts parts(screen);
    const QRect maker = onScreen(*parts.makerLogo);
    const QRect product = onScreen(*parts.productLogo);
    QImage before = screen.grab().toImage();

    screen.setMessageVisible(true);
    QCoreApplication::processEvents();
    QCOMPARE(onScreen(*parts.makerLogo), maker);
    QCOMPARE(onScreen(*parts.productLogo), product);
    QImage after = screen.grab().toImage();
    QVERIFY(after != before);

    // But for the message itself, every pixel is what it was.
    const QRect message = onScreen(*parts.message);
    const qreal ratio = after.devicePixelRatio();
    const QRect covered(message.topLeft() * ratio, message.size() * ratio);
    for (int y = covered.top(); y <= covered.bottom(); ++y)
        for (int x = covered.left(); x <= covered.right(); ++x)
            after.setPixel(x, y, before.pixel(x, y));
    QCOMPARE(after, before);
}

void SafeShutdownWidgetTest::theScreenFillsWhatItGets()
{
    QFETCH(QSize, size);
    SafeShutdownWidget screen;
    screen.setDeviceName(QStringLiteral("Unknown"));
    screen.setMessageVisible(true);
    show(screen, size);
    QCOMPARE(screen.size(), size);
    const Parts parts(screen);
    const QRect within = screen.rect().adjusted(50, 50, -50, -50);
    QCOMPARE(onScreen(*parts.makerLogo).bottomLeft(), within.bottomLeft());
    QCOMPARE(onScreen(*parts.productLogo).bottomRight(), within.bottomRight());
    QVERIFY(within.contains(onScreen(*parts.message)));
    QVERIFY(parts.message->height() >= parts.message->heightForWidth(parts.message->width()));
}

void SafeShutdownWidgetTest::theGroundFollowsTheFormula()
{
    QFETCH(QSize, size);
    SafeShutdownWidget screen;
    show(screen, size);
    const QString problems = gradientProblems(screen);
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

void SafeShutdownWidgetTest::resizingRecomputesTheGround()
{
    SafeShutdownWidget screen;
    show(screen, {1280, 800});
    QCOMPARE(gradientProblems(screen), QString());
    screen.resize(1280, 1024);
    QCoreApplication::processEvents();
    QCOMPARE(gradientProblems(screen), QString());
}

void SafeShutdownWidgetTest::onlyTheProgramClosesTheScreen()
{
    SafeShutdownWidget screen;
    screen.show();
    QCloseEvent fromTheWindowManager;
    QSpontaneKeyEvent::setSpontaneous(&fromTheWindowManager);
    qApp->notify(&screen, &fromTheWindowManager); // sendEvent() would take it for our own
    QVERIFY(!fromTheWindowManager.isAccepted());
    QVERIFY(screen.isVisible());
    QVERIFY(screen.close());
}

QTEST_MAIN(SafeShutdownWidgetTest)
#include "tst_safe_shutdown_widget.moc"
