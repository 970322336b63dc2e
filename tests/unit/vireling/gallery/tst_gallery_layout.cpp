#include "shown_page.h"

#include "support/layout_check.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pseudo_translator.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QVBoxLayout>

using namespace Vireling;

namespace {

enum class Texts
{
    Plain,
    Pseudo
};

} // namespace

/** Run at several densities; see the CMake file. */
class TestGalleryLayout : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void theDensityIsTheOneAskedFor();
    void everyTextFits_data();
    void everyTextFits();
    void aTextThatDoesNotFitIsFound_data();
    void aTextThatDoesNotFitIsFound();
    void anOverlapIsFound();
    void aChildOutsideItsParentIsFound();
};

void TestGalleryLayout::initTestCase()
{
    initialiseResources();
    installAppearance(Theme::Dark);
}

void TestGalleryLayout::cleanup()
{
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

void TestGalleryLayout::theDensityIsTheOneAskedFor()
{
    QWidget widget;
    QCOMPARE(widget.logicalDpiX(), qEnvironmentVariableIntValue("QT_FONT_DPI"));
}

void TestGalleryLayout::everyTextFits_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("texts");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    const auto &pages = galleryPages();
    for (int index = 0; index < int(pages.size()); ++index)
        for (const Texts texts : {Texts::Plain, Texts::Pseudo})
            for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft})
                QTest::addRow("%s, %s, %s", pages[size_t(index)].name,
                              texts == Texts::Plain ? "plain" : "pseudo",
                              direction == Qt::LeftToRight ? "left to right" : "right to left")
                    << index << int(texts) << direction;
}

void TestGalleryLayout::everyTextFits()
{
    QFETCH(int, page);
    QFETCH(int, texts);
    QFETCH(Qt::LayoutDirection, direction);
    PseudoTranslator translator;
    if (Texts(texts) == Texts::Pseudo)
        QVERIFY(QCoreApplication::installTranslator(&translator));
    QApplication::setLayoutDirection(direction);

    const auto shown = showPage(galleryPages()[size_t(page)]);
    QVERIFY(shown);

    const QStringList problems = layoutProblems(*shown);
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
}

void TestGalleryLayout::aTextThatDoesNotFitIsFound_data()
{
    QTest::addColumn<QByteArray>("kind");
    for (const char *kind :
         {"label", "wrapped label", "push button", "check box", "group box", "tab bar"})
        QTest::newRow(kind) << QByteArray(kind);
}

void TestGalleryLayout::aTextThatDoesNotFitIsFound()
{
    QFETCH(QByteArray, kind);
    const QString text = QStringLiteral("A text that is far too long for its control");
    QWidget window;
    window.resize(900, 300);
    QWidget *control = nullptr;
    if (kind.endsWith("label")) {
        auto *label = new QLabel(text, &window);
        label->setWordWrap(kind == "wrapped label");
        control = label;
    } else if (kind == "push button")
        control = new QPushButton(text, &window);
    else if (kind == "check box")
        control = new QCheckBox(text, &window);
    else if (kind == "group box")
        control = new QGroupBox(text, &window);
    else {
        auto *bar = new QTabBar(&window);
        bar->setUsesScrollButtons(false);
        bar->addTab(text);
        control = bar;
    }
    window.show();
    control->resize(control->sizeHint().expandedTo({600, 40}));
    QCOMPARE(layoutProblems(window), QStringList());

    control->resize(60, 16);

    QCOMPARE(layoutProblems(window).size(), 1);
}

void TestGalleryLayout::anOverlapIsFound()
{
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *first = new QLabel(QStringLiteral("first"));
    auto *second = new QLabel(QStringLiteral("second"));
    column->addWidget(first);
    column->addWidget(second);
    window.show();
    QCOMPARE(layoutProblems(window), QStringList());

    second->setGeometry(first->geometry().translated(0, 1));

    QCOMPARE(layoutProblems(window).size(), 1);
}

void TestGalleryLayout::aChildOutsideItsParentIsFound()
{
    QWidget window;
    window.resize(100, 100);
    auto *child = new QWidget(&window);
    child->setGeometry(0, 0, 100, 100);
    window.show();
    window.resize(100, 100);
    QCOMPARE(layoutProblems(window), QStringList());

    child->move(1, 0);

    QCOMPARE(layoutProblems(window).size(), 1);
}

/** Not QTEST_MAIN, which forces 96 dots per inch. */
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    TestGalleryLayout test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_gallery_layout.moc"
