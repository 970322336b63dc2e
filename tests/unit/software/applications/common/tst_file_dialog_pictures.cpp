/*
 * The file dialog in every mode and at both places, on every screen the appliance is sold
 * with: nothing cut off, nothing on top of each other. Run at ratio 1 and 2, in the sandbox;
 * see the CMake file.
 *
 * With R4_SCREEN_PICTURES naming a folder it leaves the pictures there, to be looked at.
 */
#include "file_dialog_parts.h"
#include "support/scratch_machine.h"

#include "common/file_dialog.h"
#include "common/file_widget.h"
#include "common/usb_support.h"
#include "support/kernel_fakes.h"
#include "support/layout_check.h"
#include "support/log_capture.h"
#include "vireling/gallery/pseudo_translator.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"
#include "vireling/window/message_box_frames.h"

#include <QApplication>
#include <QDir>
#include <QLayout>
#include <QMessageBox>
#include <QPainter>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace TestSupport;

namespace {

/** In logical pixels; at ratio 2 the one of 1920 x 1080 has 3840 x 2160 of its own. */
constexpr QSize screenSizes[]{{800, 480}, {1024, 768}, {1280, 800}, {1920, 1080}};

const char *const modeNames[]{"create", "load", "save-as", "backup", "folder"};
const QString internalFolder = QStringLiteral("/user_data/shows");
constexpr int manyFiles = 5000;

enum class Place
{
    Internal,
    Key
};

struct Situation
{
    QSize screen{800, 480};
    FileWidget::Mode mode = FileWidget::BackupMode;
    Place place = Place::Key;
    bool pseudo = false;
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

QString nameOf(const Situation &situation)
{
    return QStringLiteral("%1x%2-%3-%4-%5-%6")
        .arg(situation.screen.width())
        .arg(situation.screen.height())
        .arg(QLatin1String(modeNames[situation.mode]),
             QLatin1String(situation.place == Place::Key ? "key" : "internal"),
             QLatin1String(situation.pseudo ? "pseudo" : "plain"),
             QLatin1String(situation.direction == Qt::LeftToRight ? "ltr" : "rtl"));
}

/** A layout within a layout hears one turn of the event loop later. */
void settle()
{
    for (int turn = 0; turn < 5; ++turn)
        QCoreApplication::processEvents();
}

QString joined(const QStringList &problems)
{
    return problems.join(QLatin1Char('\n'));
}

/** For a pair of eyes: the dialog on the ground of the crash screen, and what is over it. */
void keepPicture(const QSize &screen, QWidget &dialog, QWidget *above, const QString &name)
{
    const QString folder = qEnvironmentVariable("R4_SCREEN_PICTURES");
    if (folder.isEmpty())
        return;
    const qreal ratio = dialog.devicePixelRatioF();
    QImage picture(screen * ratio, QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    const QSize room = screen - dialog.size();
    const QPoint corner(room.width() / 2, room.height() / 2);
    painter.drawPixmap(corner, dialog.grab());
    if (above) {
        const bool isList = above->windowType() == Qt::Popup;
        const QSize left = screen - above->size();
        painter.drawPixmap(isList ? corner + above->pos() - dialog.pos()
                                  : QPoint(left.width() / 2, left.height() / 2),
                           above->grab());
    }
    painter.end();
    QVERIFY(picture.save(
        QDir(folder).filePath(QStringLiteral("dialog-%1@%2.png").arg(name).arg(qRound(ratio)))));
}

} // namespace

class FileDialogPicturesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();
    void theRatioIsTheOneAskedFor();
    void itFits_data();
    void itFits();
    void itFitsMaximised_data() { itFits_data(); }
    void itFitsMaximised();
    void itFitsInTheLightTheme();
    void longNamesFit_data();
    void longNamesFit();
    void manyFilesScroll();
    void theQuestionFitsOverIt_data() { longNamesFit_data(); }
    void theQuestionFitsOverIt();
    void theListOfLocationsShowsATree_data() { longNamesFit_data(); }
    void theListOfLocationsShowsATree();
    void aDeepFolderKeepsItsName();
    void everyControlShowsItsFocus_data();
    void everyControlShowsItsFocus();
    void aChosenRowShows();

private:
    Situation fetched();
    /** The dialog at its first size, its list filled; not longer than the screen. */
    void show(const Situation &situation, const QString &below = {});
    FileDialogParts parts() const { return FileDialogParts(*dialog); }
    QString placeFolder(Place place) const
    {
        return place == Place::Key ? keyFolder : internalFolder;
    }

    std::unique_ptr<LogCapture> log;
    std::unique_ptr<FileDialog> dialog;
    Vireling::PseudoTranslator translator;
};

void FileDialogPicturesTest::initTestCase()
{
    QVERIFY2(onScratchMachine(), "this test writes into /usbkey: run it in the sandbox");
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
    Vireling::frameMessageBoxes();
    removeAllDisks();
    addKeyWithPartition();
    log = std::make_unique<LogCapture>();
    QVERIFY(USBSupport::instance()->isUsbKeyPresent());
}

void FileDialogPicturesTest::init()
{
    KernelFakes::instance().reset();
    QApplication::setLayoutDirection(Qt::LeftToRight);
    fillOrdinarily(keyFolder);
    fillOrdinarily(internalFolder);
}

void FileDialogPicturesTest::cleanup()
{
    dialog.reset();
    QCoreApplication::removeTranslator(&translator);
    while (USBSupport::instance()->isUsbKeyMounted())
        USBSupport::instance()->unmount();
    emptyFolder(keyFolder);
    emptyFolder(internalFolder);
}

void FileDialogPicturesTest::cleanupTestCase()
{
    USBSupport::destroyInstance();
    log.reset();
}

Situation FileDialogPicturesTest::fetched()
{
    QFETCH(QSize, screen);
    QFETCH(int, mode);
    QFETCH(int, place);
    QFETCH(bool, pseudo);
    QFETCH(Qt::LayoutDirection, direction);
    return {screen, FileWidget::Mode(mode), Place(place), pseudo, direction};
}

void FileDialogPicturesTest::show(const Situation &situation, const QString &below)
{
    if (situation.pseudo)
        QCoreApplication::installTranslator(&translator);
    QApplication::setLayoutDirection(situation.direction);
    dialog = std::make_unique<FileDialog>();
    dialog->setWindowTitle(QStringLiteral("Save crash report"));
    FileWidget *panel = dialog->fileWidget();
    panel->setMode(situation.mode);
    panel->setInternalStoragePath(internalFolder);
    panel->setDirectory(placeFolder(situation.place) + below);
    panel->setInternalStorageDisabled(situation.place == Place::Key);
    if (situation.mode != FileWidget::FolderMode)
        panel->setNameFilters(QStringLiteral("*.cdp"));
    panel->setFileName(QStringLiteral("Crash Report 4"));
    dialog->resize(dialog->sizeHint());
    dialog->open();
    dialog->activateWindow();
    const QStringList entries = QDir(placeFolder(situation.place) + below)
                                    .entryList(situation.mode == FileWidget::FolderMode
                                                   ? QDir::AllDirs | QDir::NoDotAndDotDot
                                                   : QDir::AllEntries | QDir::NoDotAndDotDot);
    const FileListView *list = parts().list;
    QTRY_COMPARE(list->model()->rowCount(list->rootIndex()), entries.size());
    settle();
}

void FileDialogPicturesTest::theRatioIsTheOneAskedFor()
{
    QWidget widget;
    QCOMPARE(widget.devicePixelRatioF(),
             qMax(1.0, qEnvironmentVariable("QT_SCALE_FACTOR").toDouble()));
}

void FileDialogPicturesTest::itFits_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("place");
    QTest::addColumn<bool>("pseudo");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    for (const QSize &screen : screenSizes)
        for (int mode = FileWidget::CreateMode; mode <= FileWidget::FolderMode; ++mode)
            for (const Place place : {Place::Internal, Place::Key})
                for (const bool pseudo : {false, true})
                    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft})
                        QTest::newRow(qPrintable(
                            nameOf({screen, FileWidget::Mode(mode), place, pseudo, direction})))
                            << screen << mode << int(place) << pseudo << direction;
}

void FileDialogPicturesTest::itFits()
{
    const Situation situation = fetched();
    show(situation);
    keepPicture(situation.screen, *dialog, nullptr, nameOf(situation));
    QVERIFY2(QRect(QPoint(), situation.screen).contains(QRect(QPoint(), dialog->size())),
             qPrintable(QStringLiteral("%1 x %2").arg(dialog->width()).arg(dialog->height())));
    QCOMPARE(joined(layoutProblems(*dialog)), QString());
}

void FileDialogPicturesTest::itFitsMaximised()
{
    const Situation situation = fetched();
    show(situation);
    dialog->resize(situation.screen);
    settle();
    QCOMPARE(dialog->size(), situation.screen);
    QCOMPARE(joined(layoutProblems(*dialog)), QString());
}

void FileDialogPicturesTest::itFitsInTheLightTheme()
{
    Vireling::installAppearance(Vireling::Theme::Light);
    show({});
    keepPicture({800, 480}, *dialog, nullptr, QStringLiteral("light"));
    const QString problems = joined(layoutProblems(*dialog));
    Vireling::installAppearance(Vireling::Theme::Dark);
    QCOMPARE(problems, QString());
}

void FileDialogPicturesTest::longNamesFit_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("ltr") << Qt::LeftToRight;
    QTest::newRow("rtl") << Qt::RightToLeft;
}

void FileDialogPicturesTest::longNamesFit()
{
    QFETCH(Qt::LayoutDirection, direction);
    makeFile(keyFolder, longestName(QStringLiteral("Crash Report of "), QStringLiteral(".cdp")));
    QVERIFY(QDir(keyFolder).mkdir(longestName(QStringLiteral("Shows of "), {})));
    Situation situation;
    situation.direction = direction;
    show(situation);
    const FileDialogParts shown = parts();
    shown.name->setText(longestName(QStringLiteral("Crash Report of "), QStringLiteral(".cdp")));
    keepPicture(situation.screen, *dialog, nullptr,
                QStringLiteral("long-names-") + QLatin1String(QTest::currentDataTag()));
    QCOMPARE(joined(layoutProblems(*dialog)), QString());
    QCOMPARE(dialog->size(), dialog->sizeHint());
    // A name too long for its row is elided, not scrolled away to the side.
    QVERIFY(!shown.list->horizontalScrollBar()->isVisible());
    for (int row = 0; row < shown.list->model()->rowCount(shown.list->rootIndex()); ++row) {
        const QRect item =
            shown.list->visualRect(shown.list->model()->index(row, 0, shown.list->rootIndex()));
        QVERIFY(item.left() >= 0 && item.right() <= shown.list->viewport()->rect().right());
    }
}

void FileDialogPicturesTest::manyFilesScroll()
{
    for (int number = 0; number < manyFiles; ++number)
        makeFile(keyFolder, QStringLiteral("Show %1.cdp").arg(number, 4, 10, QLatin1Char('0')));
    show({});
    const FileDialogParts shown = parts();
    QVERIFY(shown.list->verticalScrollBar()->isVisible());
    shown.list->scrollToBottom();
    settle();
    keepPicture({800, 480}, *dialog, nullptr, QStringLiteral("many-files"));
    QCOMPARE(joined(layoutProblems(*dialog)), QString());
    // The last row is wholly in sight.
    const QModelIndex root = shown.list->rootIndex();
    const QModelIndex last =
        shown.list->model()->index(shown.list->model()->rowCount(root) - 1, 0, root);
    QVERIFY(shown.list->viewport()->rect().contains(shown.list->visualRect(last)));
}

void FileDialogPicturesTest::theQuestionFitsOverIt()
{
    QFETCH(Qt::LayoutDirection, direction);
    Situation situation;
    situation.direction = direction;
    show(situation);
    parts().name->setText(QStringLiteral("Crash Report 0"));
    QString problems = QStringLiteral("no question");
    QTimer::singleShot(0, this, [&] {
        auto *question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!question)
            return;
        settle();
        keepPicture(situation.screen, *dialog, question,
                    QStringLiteral("question-") + QLatin1String(QTest::currentDataTag()));
        problems = joined(layoutProblems(*question) + layoutProblems(*dialog));
        if (!QRect(QPoint(), situation.screen).contains(QRect(QPoint(), question->size())))
            problems += QStringLiteral(" larger than the screen");
        question->button(QMessageBox::No)->click();
    });
    parts().ok->click();
    QCOMPARE(problems, QString());
}

void FileDialogPicturesTest::theListOfLocationsShowsATree()
{
    QFETCH(Qt::LayoutDirection, direction);
    Situation situation;
    situation.direction = direction;
    const QString longName = longestName(QStringLiteral("Shows of "), {});
    QVERIFY(QDir(keyFolder).mkdir(longName));
    show(situation, QStringLiteral("/Sound & Light/2026"));
    const FileDialogParts shown = parts();
    QTRY_COMPARE(shown.location->count(), 7); // two places, four folders, one below
    QCOMPARE(shown.location->currentText(), QStringLiteral("2026"));
    shown.location->showPopup();
    QWidget *popup = shown.location->view()->window();
    QTRY_VERIFY(popup->isVisible());
    settle();
    keepPicture(situation.screen, *dialog, popup,
                QStringLiteral("locations-") + QLatin1String(QTest::currentDataTag()));
    QCOMPARE(joined(layoutProblems(*dialog) + layoutProblems(*popup)), QString());
    QVERIFY(!shown.location->view()->horizontalScrollBar()->isVisible());
    // The name that is too long is elided: nothing is drawn up to the edge of its row.
    QWidget *rows = shown.location->view()->viewport();
    QRect edge(rows->width() - 6, 0, 6, rows->height() / shown.location->count());
    edge = QStyle::visualRect(direction, rows->rect(), edge);
    edge.moveTop(edge.height() * shown.location->findText(longName));
    const QImage margin = rows->grab(edge).toImage();
    QVERIFY(!isPlain(rows->grab(edge.adjusted(-60, 0, 60, 0)).toImage()));
    QVERIFY(isPlain(margin));
}

void FileDialogPicturesTest::aDeepFolderKeepsItsName()
{
    QString below;
    for (int level = 0; level < 30; ++level)
        below += QStringLiteral("/level %1").arg(level);
    QVERIFY(QDir().mkpath(keyFolder + below));
    show({}, below);
    const FileDialogParts shown = parts();
    QCOMPARE(shown.location->currentText(), QStringLiteral("level 29"));
    shown.location->showPopup();
    QTRY_VERIFY(shown.location->view()->isVisible());
    settle();
    keepPicture({800, 480}, *dialog, shown.location->view()->window(), QStringLiteral("deep"));
    QVERIFY(!shown.location->view()->horizontalScrollBar()->isVisible());
}

void FileDialogPicturesTest::everyControlShowsItsFocus_data()
{
    QTest::addColumn<QString>("control");
    for (const char *control :
         {"locationComboBox", "parentFolderButton", "newFolderButton", "usbDiskButton", "listView",
          "configurationNameLineEdit", "okButton", "cancelButton"})
        QTest::newRow(control) << QString::fromLatin1(control);
}

void FileDialogPicturesTest::everyControlShowsItsFocus()
{
    QFETCH(QString, control);
    show({});
    QTRY_VERIFY(dialog->isActiveWindow());
    auto *widget = dialog->findChild<QWidget *>(control);
    QWidget *elsewhere = widget == parts().name ? static_cast<QWidget *>(parts().cancel)
                                                : static_cast<QWidget *>(parts().name);
    QVERIFY(widget->focusPolicy() & Qt::TabFocus);
    const auto look = [&] {
        settle();
        return dialog->grab(QRect(widget->mapTo(dialog.get(), QPoint()), widget->size())).toImage();
    };
    elsewhere->setFocus(Qt::TabFocusReason);
    const QImage without = look();
    widget->setFocus(Qt::TabFocusReason);
    QVERIFY(widget->hasFocus());
    QVERIFY(look() != without);
    keepPicture({800, 480}, *dialog, nullptr, QStringLiteral("focus-") + control);
}

void FileDialogPicturesTest::aChosenRowShows()
{
    show({});
    const FileDialogParts shown = parts();
    const QModelIndex row = shown.row(QStringLiteral("Crash Report 1.cdp"));
    QVERIFY(row.isValid());
    const QRect rect = shown.list->visualRect(row);
    const QImage before = shown.list->viewport()->grab(rect).toImage();
    shown.list->setFocus();
    QTest::mouseClick(shown.list->viewport(), Qt::LeftButton, {}, rect.center());
    settle();
    QVERIFY(shown.list->viewport()->grab(rect).toImage() != before);
    QCOMPARE(shown.name->text(), QStringLiteral("Crash Report 1.cdp"));
    keepPicture({800, 480}, *dialog, nullptr, QStringLiteral("chosen-row"));
}

int main(int argc, char **argv)
{
    Vireling::initialiseHighDpi();
    QApplication app(argc, argv);
    FileDialogPicturesTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_file_dialog_pictures.moc"
