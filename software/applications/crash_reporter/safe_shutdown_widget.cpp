#include "crash_reporter/safe_shutdown_widget.h"

#include "vireling/palette/fonts.h"
#include "vireling/widgets/static_svg_widget.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QRadialGradient>
#include <QVBoxLayout>

using Vireling::StaticSvgWidget;

namespace {

constexpr int screenMargin = 50;
constexpr int makerBoxWidth = 300;
constexpr QSizeF makerLogoSize(200, 200);
constexpr QSizeF productLogoSize(300, 300);

const QColor messageColour(240, 226, 80);
const QColor groundColour(170, 170, 170);

QSizeF fitted(const StaticSvgWidget &logo, const QSizeF &bounds)
{
    return QSizeF(logo.defaultSize()).scaled(bounds, Qt::KeepAspectRatio);
}

void setRoundedSize(StaticSvgWidget *logo, const QSizeF &size)
{
    logo->setFixedSize(qRound(size.width()), qRound(size.height()));
}

QWidget *makerLogo()
{
    auto *box = new QWidget;
    auto *logo = new StaticSvgWidget(QStringLiteral("vireling:/images/tovask_logo.svg"), box);
    const QSizeF size = fitted(*logo, makerLogoSize);
    setRoundedSize(logo, size);
    box->setFixedSize(makerBoxWidth, int(size.height()));
    return box;
}

QWidget *productLogo()
{
    auto *logo = new StaticSvgWidget(QStringLiteral("vireling:/images/r4_logo.svg"));
    setRoundedSize(logo, fitted(*logo, productLogoSize));
    return logo;
}

QLabel *hiddenMessage()
{
    auto *label = new QLabel;
    label->setFont(Vireling::styleFont(Vireling::FontWeight::Regular, Vireling::FontSize::Largest));
    QPalette palette = label->palette();
    palette.setBrush(QPalette::All, QPalette::WindowText, messageColour);
    label->setPalette(palette);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true); // between the logos of a screen 800 pixels wide
    label->setVisible(false);
    QSizePolicy policy = label->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    label->setSizePolicy(policy);
    return label;
}

QVBoxLayout *column()
{
    auto *layout = new QVBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

QVBoxLayout *columnWithFoot(QWidget *foot)
{
    QVBoxLayout *layout = column();
    layout->addStretch(1);
    layout->addWidget(foot, 0, Qt::AlignBottom);
    return layout;
}

} // namespace

SafeShutdownWidget::SafeShutdownWidget(QWidget *parent)
    : QWidget(parent)
    , messageLabel(hiddenMessage())
{
    QVBoxLayout *middle = column();
    middle->addWidget(messageLabel);
    auto *columns = new QHBoxLayout(this);
    columns->setContentsMargins(screenMargin, screenMargin, screenMargin, screenMargin);
    columns->addLayout(columnWithFoot(makerLogo()));
    columns->addLayout(middle);
    columns->addLayout(columnWithFoot(productLogo()));
}

void SafeShutdownWidget::setDeviceName(const QString &name)
{
    messageLabel->setText(tr("It is now safe to switch off your\n%1 System Controller").arg(name));
}

void SafeShutdownWidget::setMessageVisible(bool visible)
{
    messageLabel->setVisible(visible);
    update();
}

void SafeShutdownWidget::closeEvent(QCloseEvent *event)
{
    event->setAccepted(!event->spontaneous());
}

void SafeShutdownWidget::paintEvent(QPaintEvent *)
{
    // The centre lies far below the screen, so that the light rises from its foot.
    QRadialGradient ground(width() * 0.5, height() * 3, height() * 3.0);
    ground.setColorAt(0.0, groundColour);
    ground.setColorAt(0.73, groundColour);
    ground.setColorAt(1.0, Qt::black);
    QPainter(this).fillRect(rect(), ground);
}
