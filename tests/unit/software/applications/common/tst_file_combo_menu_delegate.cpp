#include "common/file_combo_menu_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QPainter>
#include <QProxyStyle>
#include <QStandardItemModel>
#include <QTest>

#include <memory>

namespace {

/** What the style was asked, and how often. */
struct Question
{
    int times = 0;
    int type = -1;
    Vireling::TreeMenuItemOption item;
    const QWidget *widget = nullptr;
    QSize contents;
    QImage ground; ///< what the row held when it was to be drawn
};

/** Keeps every menu item that it is asked to draw or to measure. */
class RecordingStyle : public QProxyStyle
{
public:
    explicit RecordingStyle(QImage *pictureToWatch)
        : picture(pictureToWatch)
    {}

    void drawControl(ControlElement element, const QStyleOption *option, QPainter *,
                     const QWidget *widget) const override
    {
        if (element == CE_MenuItem)
            keep(drawn, option, widget);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override
    {
        if (type != CT_MenuItem)
            return QProxyStyle::sizeFromContents(type, option, contents, widget);
        keep(measured, option, widget);
        measured.contents = contents;
        return answer;
    }

    const QSize answer{123, 45};
    mutable Question drawn;
    mutable Question measured;

private:
    void keep(Question &question, const QStyleOption *option, const QWidget *widget) const
    {
        ++question.times;
        question.type = option->type;
        question.widget = widget;
        question.ground = *picture;
        if (const auto *item = qstyleoption_cast<const Vireling::TreeMenuItemOption *>(option))
            question.item = *item;
    }

    QImage *picture;
};

constexpr QSize rowSize(200, 30);

} // namespace

class FileComboMenuDelegateTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void theStyleOfTheBoxDrawsAMenuItem();
    void theRowIsErasedFirst();
    void everyAmpersandIsDoubled_data();
    void everyAmpersandIsDoubled();
    void aTabOpensNoColumnOfShortcuts();
    void theLevelIsTheLastOfTheData_data();
    void theLevelIsTheLastOfTheData();
    void thePictureOfTheEntryIsTaken();
    void anEntryWithoutAPictureGetsATransparentOne();
    void aSeparatorIsDrawnAsOne();
    void onlyTheWordSeparatorMakesOne();
    void coloursAreThoseOfMenus_data();
    void coloursAreThoseOfMenus();
    void theSelectedRowIsSelected();
    void aDisabledEntryIsDisabled();
    void directionFollowsTheView();
    void theSizeIsTheStylesForTheSameItem();

private:
    QStandardItem *addEntry(const QString &text, const QVariant &data = {});
    QStyleOptionViewItem row() const;
    const Question &draw(const QStyleOptionViewItem &option);
    const Question &draw() { return draw(row()); }
    const Question &measure();

    QImage picture;
    std::unique_ptr<RecordingStyle> style;
    std::unique_ptr<QWidget> window;
    QComboBox *box = nullptr;
    std::unique_ptr<FileComboMenuDelegate> delegate;
    QStandardItemModel *model = nullptr;
};

void FileComboMenuDelegateTest::initTestCase()
{
    // The house style has one palette for all; this one lets menus have their own.
    QApplication::setStyle(QStringLiteral("fusion"));
}

void FileComboMenuDelegateTest::init()
{
    picture = QImage(rowSize, QImage::Format_RGB32);
    picture.fill(Qt::green);
    style = std::make_unique<RecordingStyle>(&picture);
    window = std::make_unique<QWidget>();
    box = new QComboBox(window.get());
    box->setStyle(style.get());
    model = qobject_cast<QStandardItemModel *>(box->model());
    delegate = std::make_unique<FileComboMenuDelegate>(nullptr, box);
}

void FileComboMenuDelegateTest::cleanup()
{
    delegate.reset();
    window.reset();
    style.reset();
}

QStandardItem *FileComboMenuDelegateTest::addEntry(const QString &text, const QVariant &data)
{
    auto *item = new QStandardItem(text);
    item->setData(data, Qt::UserRole);
    model->appendRow(item);
    return item;
}

QStyleOptionViewItem FileComboMenuDelegateTest::row() const
{
    QStyleOptionViewItem option;
    option.rect = QRect({0, 0}, rowSize);
    option.state = QStyle::State_Enabled;
    option.direction = Qt::LeftToRight;
    return option;
}

const Question &FileComboMenuDelegateTest::draw(const QStyleOptionViewItem &option)
{
    QPainter painter(&picture);
    painter.setBackground(Qt::red);
    delegate->paint(&painter, option, model->index(0, 0));
    return style->drawn;
}

const Question &FileComboMenuDelegateTest::measure()
{
    delegate->sizeHint(row(), model->index(0, 0));
    return style->measured;
}

void FileComboMenuDelegateTest::theStyleOfTheBoxDrawsAMenuItem()
{
    addEntry(QStringLiteral("shows"));
    const Question &question = draw();
    QCOMPARE(question.times, 1);
    QCOMPARE(question.type, int(QStyleOption::SO_MenuItem));
    QCOMPARE(question.widget, box);
    QCOMPARE(question.item.rect, QRect({0, 0}, rowSize));
    QCOMPARE(question.item.menuItemType, QStyleOptionMenuItem::Normal);
    QCOMPARE(question.item.text, QStringLiteral("shows"));
    QCOMPARE(question.item.checkType, QStyleOptionMenuItem::NotCheckable);
    QVERIFY(!question.item.menuHasCheckableItems);
    QCOMPARE(question.item.maxIconWidth, box->iconSize().width());
    QCOMPARE(question.item.font, box->font());
    QVERIFY(question.item.fontMetrics == QFontMetrics(box->font()));
}

void FileComboMenuDelegateTest::theRowIsErasedFirst()
{
    addEntry(QStringLiteral("shows"));
    QStyleOptionViewItem option = row();
    option.rect.setHeight(20);
    const QImage ground = draw(option).ground;
    QCOMPARE(ground.pixelColor(0, 0), QColor(Qt::red));
    QCOMPARE(ground.pixelColor(199, 19), QColor(Qt::red));
    QCOMPARE(ground.pixelColor(0, 20), QColor(Qt::green)); // the next row's
}

void FileComboMenuDelegateTest::everyAmpersandIsDoubled_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << "shows"
                          << "shows";
    QTest::newRow("one") << "Sound & Light"
                         << "Sound && Light";
    QTest::newRow("two apart") << "A&B&C"
                               << "A&&B&&C";
    QTest::newRow("two together") << "A&&B"
                                  << "A&&&&B";
    QTest::newRow("at the end") << "A&"
                                << "A&&";
    QTest::newRow("empty") << ""
                           << "";
}

void FileComboMenuDelegateTest::everyAmpersandIsDoubled()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    addEntry(name);
    QCOMPARE(draw().item.text, text);
    QCOMPARE(measure().item.text, text);
}

void FileComboMenuDelegateTest::aTabOpensNoColumnOfShortcuts()
{
    addEntry(QStringLiteral("one\tfolder"));
    QCOMPARE(draw().item.text, QStringLiteral("one folder"));
}

void FileComboMenuDelegateTest::theLevelIsTheLastOfTheData_data()
{
    const QString path = QStringLiteral("/usbkey/shows");
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<int>("level");
    QTest::newRow("no data") << QVariant() << 0;
    QTest::newRow("no list") << QVariant(5) << 0;
    QTest::newRow("empty list") << QVariant(QVariantList()) << 0;
    QTest::newRow("a location") << QVariant(QVariantList{path}) << 0;
    QTest::newRow("a lone number") << QVariant(QVariantList{7}) << 0;
    QTest::newRow("a folder") << QVariant(QVariantList{path, 1}) << 1;
    QTest::newRow("deep") << QVariant(QVariantList{path, 12}) << 12;
    QTest::newRow("more between") << QVariant(QVariantList{path, 1, QString(), 3}) << 3;
    QTest::newRow("negative") << QVariant(QVariantList{path, -4}) << 0;
    QTest::newRow("no number") << QVariant(QVariantList{path, QStringLiteral("x")}) << 0;
}

void FileComboMenuDelegateTest::theLevelIsTheLastOfTheData()
{
    QFETCH(QVariant, data);
    QFETCH(int, level);
    addEntry(QStringLiteral("shows"), data);
    QCOMPARE(draw().item.level, level);
    QCOMPARE(measure().item.level, level);
}

void FileComboMenuDelegateTest::thePictureOfTheEntryIsTaken()
{
    QPixmap blue(16, 16);
    blue.fill(Qt::blue);
    QStandardItem *item = addEntry(QStringLiteral("shows"));

    item->setIcon(blue);
    QCOMPARE(draw().item.icon.cacheKey(), item->icon().cacheKey());
    item->setData(blue, Qt::DecorationRole);
    QCOMPARE(draw().item.icon.pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::blue));
}

void FileComboMenuDelegateTest::anEntryWithoutAPictureGetsATransparentOne()
{
    addEntry(QStringLiteral("shows"));
    const QImage image = draw().item.icon.pixmap(box->iconSize()).toImage();
    QCOMPARE(image.size(), box->iconSize());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            QCOMPARE(image.pixelColor(x, y).alpha(), 0);
    QVERIFY(!measure().item.icon.isNull());
}

void FileComboMenuDelegateTest::aSeparatorIsDrawnAsOne()
{
    box->insertSeparator(0);
    QCOMPARE(draw().item.menuItemType, QStyleOptionMenuItem::Separator);
    QCOMPARE(draw().item.text, QString());
    QCOMPARE(measure().item.menuItemType, QStyleOptionMenuItem::Separator);
}

void FileComboMenuDelegateTest::onlyTheWordSeparatorMakesOne()
{
    QStandardItem *item = addEntry(QStringLiteral("separator"));
    item->setAccessibleDescription(QStringLiteral("a separator"));
    QCOMPARE(draw().item.menuItemType, QStyleOptionMenuItem::Normal);
}

void FileComboMenuDelegateTest::coloursAreThoseOfMenus_data()
{
    QTest::addColumn<bool>("active");
    QTest::addColumn<QColor>("text");
    QTest::newRow("in the active window") << true << QColor(1, 2, 3);
    QTest::newRow("in another") << false << QColor(4, 5, 6);
}

void FileComboMenuDelegateTest::coloursAreThoseOfMenus()
{
    QFETCH(bool, active);
    QFETCH(QColor, text);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QWidget other;
    if (active) {
        window->activateWindow();
        QTRY_VERIFY(window->isActiveWindow());
    } else {
        other.show();
        other.activateWindow();
        QTRY_VERIFY(!window->isActiveWindow());
    }

    addEntry(QStringLiteral("shows"));
    const QPalette before = QApplication::palette("QMenu");
    QPalette menu = before;
    menu.setColor(QPalette::Active, QPalette::WindowText, QColor(1, 2, 3));
    menu.setColor(QPalette::Inactive, QPalette::WindowText, QColor(4, 5, 6));
    QApplication::setPalette(menu, "QMenu");
    const Question &question = draw();
    QApplication::setPalette(before, "QMenu");
    QCOMPARE(question.item.palette.color(QPalette::WindowText), text);
    QCOMPARE(question.item.state.testFlag(QStyle::State_Active), active);
}

void FileComboMenuDelegateTest::theSelectedRowIsSelected()
{
    addEntry(QStringLiteral("shows"));
    QVERIFY(!draw().item.state.testFlag(QStyle::State_Selected));
    QVERIFY(draw().item.state.testFlag(QStyle::State_Enabled));
    QStyleOptionViewItem option = row();
    option.state |= QStyle::State_Selected;
    QVERIFY(draw(option).item.state.testFlag(QStyle::State_Selected));
}

void FileComboMenuDelegateTest::aDisabledEntryIsDisabled()
{
    addEntry(QStringLiteral("shows"))->setEnabled(false);
    QVERIFY(!draw().item.state.testFlag(QStyle::State_Enabled));
    QCOMPARE(draw().item.palette.currentColorGroup(), QPalette::Disabled);
}

void FileComboMenuDelegateTest::directionFollowsTheView()
{
    addEntry(QStringLiteral("shows"));
    QCOMPARE(draw().item.direction, Qt::LeftToRight);
    QStyleOptionViewItem option = row();
    option.direction = Qt::RightToLeft;
    QCOMPARE(draw(option).item.direction, Qt::RightToLeft);
}

void FileComboMenuDelegateTest::theSizeIsTheStylesForTheSameItem()
{
    addEntry(QStringLiteral("Sound & Light"), QVariantList{QStringLiteral("/usbkey/x"), 2});
    QCOMPARE(delegate->sizeHint(row(), model->index(0, 0)), style->answer);
    const Question &question = style->measured;
    QCOMPARE(question.times, 1);
    QCOMPARE(question.widget, box);
    QCOMPARE(question.item.level, 2);
    QCOMPARE(question.item.text, QStringLiteral("Sound && Light"));
    QCOMPARE(question.contents.width(),
             box->fontMetrics().size(Qt::TextSingleLine, QStringLiteral("Sound & Light")).width());
    QVERIFY(question.contents.height() >= box->fontMetrics().height());
}

QTEST_MAIN(FileComboMenuDelegateTest)
#include "tst_file_combo_menu_delegate.moc"
