#include "shown_page.h"
#include "shown_texts.h"

#include "vireling/gallery/pages.h"
#include "vireling/gallery/pseudo_translator.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"
#include "vireling/window/dialog.h"
#include "vireling/window/window_control_button.h"
#include "vireling/window/window_title_bar.h"
#include "vireling/window/wizard.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Vireling;

namespace {

/** What no translator is asked for: numbers, dates, names of roles in the code. */
bool isForeign(const QString &where, const QString &text)
{
    static const QRegularExpression numbers(QStringLiteral("^[\\d\\s.,:/%#x-]*$"));
    // Qt takes the names of days and months, and how a date is written, from the locale.
    static const QRegularExpression ofLocale(
        QStringLiteral("QCalendar|QDateEdit|QTimeEdit|QDateTimeEdit"));
    // Qt gives the small parts of these their texts once, when it makes them.
    static const QRegularExpression ofQt(
        QStringLiteral("QMdi::|QMdiSubWindow.*QMenu|QDockWidgetTitleButton|"
                       "QTabBar\\[\\d+\\]/(QToolButton|CloseButton)"));
    return numbers.match(text).hasMatch() || ofLocale.match(where).hasMatch() ||
           ofQt.match(where).hasMatch();
}

bool isTranslated(const QString &text)
{
    return text.contains(QLatin1Char('[')) && text.contains(QLatin1Char(']'));
}

QStringList untranslated(const QMap<QString, QString> &texts)
{
    QStringList left;
    for (auto text = texts.begin(); text != texts.end(); ++text)
        if (!isForeign(text.key(), text.value()) && !isTranslated(text.value()))
            left << text.key() + QLatin1String(": ") + text.value();
    return left;
}

} // namespace

class TestGalleryTranslation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyTextOfAPageFollowsTheLanguage_data();
    void everyTextOfAPageFollowsTheLanguage();
    void theTextsOfTheTitleBarFollow();
    void theButtonsOfAWizardFollow();
    void theNamesOfThemesFollow();
    void pseudoTranslation_data();
    void pseudoTranslation();
};

void TestGalleryTranslation::initTestCase()
{
    initialiseResources();
    installAppearance(Theme::Dark);
}

void TestGalleryTranslation::everyTextOfAPageFollowsTheLanguage_data()
{
    QTest::addColumn<int>("page");
    const auto &pages = galleryPages();
    for (int index = 0; index < int(pages.size()); ++index)
        // The page of colours is a table of identifiers.
        if (qstrcmp(pages[size_t(index)].name, "colours") != 0)
            QTest::newRow(pages[size_t(index)].name) << index;
}

void TestGalleryTranslation::everyTextOfAPageFollowsTheLanguage()
{
    QFETCH(int, page);
    const auto shown = showPage(galleryPages()[size_t(page)]);
    QVERIFY(shown);
    const auto before = shownTexts(*shown);
    QVERIFY(!before.isEmpty());
    QVERIFY(!isTranslated(QStringList(before.values()).join(QString())));
    const QSignalSpy titleChanges(shown.get(), &QWidget::windowTitleChanged);

    PseudoTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCoreApplication::processEvents(); // the event is posted to parts of parts

    const auto after = shownTexts(*shown);
    const QStringList left = untranslated(after);
    QVERIFY2(left.isEmpty(), qPrintable(left.join(QLatin1Char('\n'))));
    QVERIFY(isTranslated(shown->windowTitle()));
    QCOMPARE(titleChanges.count(), 0);
    QVERIFY(!shown->signalsBlocked());
}

void TestGalleryTranslation::theTextsOfTheTitleBarFollow()
{
    Dialog dialog;
    dialog.show();
    const auto bars = dialog.findChildren<WindowTitleBar *>();
    QCOMPARE(bars.size(), 1);
    const auto texts = [&] {
        QStringList all;
        for (const WindowControl control : {WindowControl::Close, WindowControl::Maximise,
                                            WindowControl::Minimise, WindowControl::Restore}) {
            const QAction *action = bars.first()->controlAction(control);
            all << action->text() << action->toolTip();
        }
        return all;
    };
    QCOMPARE(texts(), QStringList({"Close", "Close", "Maximise", "Maximise", "Minimise", "Minimise",
                                   "Restore", "Restore"}));

    PseudoTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCoreApplication::processEvents();

    for (const QString &text : texts())
        QVERIFY2(isTranslated(text), qPrintable(text));
}

void TestGalleryTranslation::theButtonsOfAWizardFollow()
{
    Wizard wizard;
    wizard.addPage(new QWizardPage);
    wizard.addPage(new QWizardPage);
    wizard.show();
    // What the buttons show; buttonText() answers in the language of the moment anyway.
    QCOMPARE(wizard.button(QWizard::CancelButton)->text(), QStringLiteral("Cancel"));

    PseudoTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCoreApplication::processEvents();

    for (const QWizard::WizardButton button :
         {QWizard::BackButton, QWizard::NextButton, QWizard::FinishButton, QWizard::CancelButton})
        QVERIFY2(isTranslated(wizard.button(button)->text()),
                 qPrintable(wizard.button(button)->text()));
}

void TestGalleryTranslation::theNamesOfThemesFollow()
{
    PseudoTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));

    for (const Theme theme : {Theme::System, Theme::Dark, Theme::Light})
        QVERIFY2(isTranslated(themeName(theme)), qPrintable(themeName(theme)));
}

void TestGalleryTranslation::pseudoTranslation_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("a word grows by two fifths") << "Saved" << QString::fromUtf8("[Såvéd ~]");
    QTest::newRow("mnemonic stays") << "&New" << QString::fromUtf8("[&Néw ~]");
    QTest::newRow("place for an argument stays") << "%1 a" << QString::fromUtf8("[%1 å ~]");
    QTest::newRow("markup stays") << "<table>a" << QString::fromUtf8("[<table>å ~~~]");
    QTest::newRow("nothing stays nothing") << ""
                                           << "";
    QTest::newRow("white space stays") << " "
                                       << " ";
}

void TestGalleryTranslation::pseudoTranslation()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(Vireling::pseudoTranslation(text), expected);
}

QTEST_MAIN(TestGalleryTranslation)
#include "tst_gallery_translation.moc"
