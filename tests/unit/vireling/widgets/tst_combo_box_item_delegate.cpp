#include "vireling/widgets/combo_box_item_delegate.h"

#include <QStandardItemModel>
#include <QtTest>

using namespace Vireling;

namespace {

class Delegate : public ComboBoxItemDelegate
{
public:
    QStyleOptionViewItem optionFor(const QStandardItem &item) const
    {
        QStyleOptionViewItem option;
        initStyleOption(&option, item.index());
        return option;
    }
};

} // namespace

class TestComboBoxItemDelegate : public QObject
{
    Q_OBJECT

private slots:
    void anItemWithoutABackgroundDrawsNone();
    void aBackgroundFromTheModelIsKept_data();
    void aBackgroundFromTheModelIsKept();
    void theRestOfTheItemIsAsUsual();

private:
    QStandardItemModel model;
    Delegate delegate;
};

void TestComboBoxItemDelegate::anItemWithoutABackgroundDrawsNone()
{
    auto *item = new QStandardItem("plain");
    model.appendRow(item);
    const QBrush brush = delegate.optionFor(*item).backgroundBrush;
    QCOMPARE(brush.style(), Qt::SolidPattern);
    QCOMPARE(brush.color(), QColor(0, 0, 0, 0));
}

void TestComboBoxItemDelegate::aBackgroundFromTheModelIsKept_data()
{
    QTest::addColumn<QBrush>("background");
    QTest::newRow("solid") << QBrush(Qt::red);
    QTest::newRow("pattern") << QBrush(Qt::red, Qt::Dense4Pattern);
    QTest::newRow("translucent") << QBrush(QColor(255, 0, 0, 1));
}

void TestComboBoxItemDelegate::aBackgroundFromTheModelIsKept()
{
    QFETCH(QBrush, background);
    auto *item = new QStandardItem("coloured");
    item->setBackground(background);
    model.appendRow(item);
    QCOMPARE(delegate.optionFor(*item).backgroundBrush, background);
}

void TestComboBoxItemDelegate::theRestOfTheItemIsAsUsual()
{
    auto *item = new QStandardItem("text");
    item->setCheckable(true);
    item->setCheckState(Qt::Checked);
    model.appendRow(item);
    const QStyleOptionViewItem option = delegate.optionFor(*item);
    QCOMPARE(option.text, QString("text"));
    QCOMPARE(option.checkState, Qt::Checked);
}

QTEST_MAIN(TestComboBoxItemDelegate)
#include "tst_combo_box_item_delegate.moc"
