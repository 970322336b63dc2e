#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"
#include "vireling/widgets/card_button.h"

#include <QPainter>
#include <QStyleOption>
#include <QtTest>

#include <vector>

using namespace Vireling;

namespace {

struct NamedState
{
    const char *name;
    QStyle::State set;
    QStyle::State cleared = QStyle::State_None;
};

const std::vector<NamedState> states{
    {"normal", QStyle::State_Raised},
    {"hovered", QStyle::State_Raised | QStyle::State_MouseOver},
    {"pressed", QStyle::State_Sunken, QStyle::State_Raised},
    {"focused", QStyle::State_Raised | QStyle::State_HasFocus},
    {"checked", QStyle::State_On},
    {"checked and focused", QStyle::State_On | QStyle::State_HasFocus},
    {"disabled", QStyle::State_Raised, QStyle::State_Enabled},
    {"disabled and checked", QStyle::State_On, QStyle::State_Enabled},
};

QIcon redIcon()
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

class Card : public CardButton
{
public:
    using CardButton::CardButton;

    /** The card in a state that a pointer would bring about, a frame of `margin` around it. */
    QImage picture(const NamedState &state, int margin = 0) const
    {
        QStyleOptionToolButton option;
        initStyleOption(&option);
        option.rect = rect().translated(margin, margin);
        option.state = (option.state | QStyle::State_Enabled | state.set) & ~state.cleared;
        option.state &= ~(QStyle::State_HasFocus & ~state.set);
        QImage image(size() + QSize(2 * margin, 2 * margin), QImage::Format_RGB32);
        image.fill(palette().color(QPalette::Window));
        QPainter painter(&image);
        style()->drawComplexControl(QStyle::CC_ToolButton, &option, &painter, this);
        return image;
    }
};

} // namespace

/** How the style draws a card. */
class TestCardPainting : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void everyStateLooksDifferent_data();
    void everyStateLooksDifferent();
    void nothingIsPaintedOutside();
    void theIconIsPaintedOnTheLeadingSide();
    void anEmptyCardIsASurface();
};

void TestCardPainting::init()
{
    installAppearance(Theme::Dark);
}

void TestCardPainting::everyStateLooksDifferent_data()
{
    QTest::addColumn<int>("theme");
    QTest::newRow("dark") << int(Theme::Dark);
    QTest::newRow("light") << int(Theme::Light);
}

void TestCardPainting::everyStateLooksDifferent()
{
    QFETCH(int, theme);
    installAppearance(Theme(theme));
    Card card("Save", "Saves the report on a removable drive.");
    card.resize(card.sizeHint());
    for (std::size_t first = 0; first < states.size(); ++first)
        for (std::size_t second = first + 1; second < states.size(); ++second)
            QVERIFY2(card.picture(states[first]) != card.picture(states[second]),
                     qPrintable(QStringLiteral("%1, %2").arg(QLatin1String(states[first].name),
                                                             QLatin1String(states[second].name))));
}

void TestCardPainting::nothingIsPaintedOutside()
{
    constexpr int margin = 20;
    Card card("A title that does not fit", "A description that does not fit either, at all, ever.");
    card.setIcon(redIcon());
    for (const QSize &size : {QSize(0, 0), QSize(1, 1), QSize(70, 20), QSize(120, 50)})
        for (const NamedState &state : states) {
            card.resize(size);
            QImage image = card.picture(state, margin);
            // The icon alone is as large as it is, so only cards that hold it count.
            if (size.width() < 50 || size.height() < 32)
                continue;
            QPainter painter(&image);
            const QColor ground = card.palette().color(QPalette::Window);
            painter.fillRect(card.rect().translated(margin, margin), ground);
            painter.end();
            QImage empty(image.size(), image.format());
            empty.fill(ground);
            QCOMPARE(image, empty);
        }
}

void TestCardPainting::theIconIsPaintedOnTheLeadingSide()
{
    Card card("Save", "Saves the report.");
    card.setIcon(redIcon());
    card.resize(400, 80);
    const auto isRed = [&](int x) {
        return card.picture(states.front()).pixelColor(x, 40) == QColor(Qt::red);
    };
    QVERIFY(isRed(32));
    card.setLayoutDirection(Qt::RightToLeft);
    QVERIFY(!isRed(32));
    QVERIFY(isRed(400 - 32));
}

void TestCardPainting::anEmptyCardIsASurface()
{
    Card card;
    card.resize(100, 60);
    const QImage image = card.picture(states.front());
    QCOMPARE(image.pixelColor(50, 30), QColor("#212831"));
}

int main(int argc, char **argv)
{
    initialiseResources();
    QApplication application(argc, argv);
    TestCardPainting tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "tst_card_painting.moc"
