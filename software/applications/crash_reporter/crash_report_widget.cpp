#include "crash_reporter/crash_report_widget.h"

#include "crash_reporter/device_type.h"
#include "tessel_core/shared_client_info.h"
#include "tessel_core/version.h"
#include "vireling/palette/fonts.h"
#include "vireling/widgets/icon_label.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

using Vireling::FontSize;
using Vireling::FontWeight;

namespace {

constexpr QSize iconSize(24, 24);
constexpr int gridRows = 8;

// On the narrowest screen, 800 pixels wide, the report must show whole, also in a
// language that takes more room than English: what is wider than this wraps.
constexpr int widestSentence = 640;
constexpr int widestSerialNumber = 520;
constexpr int widestCountdownPrefix = 260;

/** Room for a few sentences, and low enough for screens 480 pixels high. */
class CommentsEdit : public QPlainTextEdit
{
public:
    QSize sizeHint() const override
    {
        constexpr int columns = 80;
        constexpr int lines = 8;
        const int around = 2 * (frameWidth() + qRound(document()->documentMargin()));
        return {columns * fontMetrics().averageCharWidth() + around,
                lines * fontMetrics().lineSpacing() + around};
    }
};

/**
 * Qt takes U+009C for the mark between variants of a text, of which it draws the first that
 * fits: a damaged serial number would be shown in part, or not at all.
 */
QString withoutVariants(QString text)
{
    return text.replace(QChar(0x9C), QChar::ReplacementCharacter);
}

/**
 * A serial number may be long and has no blanks: it breaks anywhere. One from a damaged
 * block may also hold line ends, and of that no more is shown than leaves the buttons on
 * the display.
 */
class SerialNumberLabel : public QLabel
{
public:
    QSize sizeHint() const override
    {
        if (fitsOneLine(widestSerialNumber))
            return QLabel::sizeHint();
        return {widestSerialNumber, heightForWidth(widestSerialNumber)};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override
    {
        if (fitsOneLine(width))
            return QLabel::sizeHint().height();
        return std::min(wholeHeight(width), mostLines * fontMetrics().lineSpacing());
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        if (fitsOneLine(width())) {
            QLabel::paintEvent(event);
            return;
        }
        const bool isCut = wholeHeight(width()) > height();
        const int vertical = isCut ? Qt::AlignTop : Qt::AlignVCenter;
        QPainter painter(this);
        style()->drawItemText(&painter, contentsRect(),
                              int(alignment() & ~Qt::AlignVertical_Mask) | vertical | breaking,
                              palette(), isEnabled(), text(), foregroundRole());
    }

private:
    static constexpr int breaking = Qt::TextWrapAnywhere;
    static constexpr int mostLines = 3;

    bool fitsOneLine(int width) const
    {
        const QSize size = QLabel::sizeHint();
        return size.width() <= width && size.height() < 2 * fontMetrics().lineSpacing();
    }

    int wholeHeight(int width) const
    {
        return fontMetrics().boundingRect(0, 0, width, QWIDGETSIZE_MAX, breaking, text()).height();
    }
};

/** How wide a text is that wraps into lines no wider than `limit`; 0 when it need not. */
int wrappedWidth(const QLabel &label, int limit)
{
    const QFontMetrics metrics = label.fontMetrics();
    if (metrics.horizontalAdvance(label.text()) <= limit)
        return 0;
    return metrics.boundingRect(0, 0, limit, QWIDGETSIZE_MAX, Qt::TextWordWrap, label.text())
        .width();
}

QLabel *labelInFont(FontWeight weight)
{
    auto *label = new QLabel;
    label->setFont(Vireling::styleFont(weight, FontSize::Largest));
    return label;
}

/** What other programs supply is shown as it is, never taken for markup. */
template <typename Label>
QLabel *valueLabel()
{
    auto *label = new Label;
    label->setTextFormat(Qt::PlainText);
    return label;
}

/** A button that is never the dialog's default: Return presses the one with the focus. */
QPushButton *actionButton()
{
    auto *button = new QPushButton;
    button->setAutoDefault(false);
    return button;
}

QLayout *iconColumn(const QStyle &style)
{
    auto *icon = new Vireling::IconLabel;
    icon->setIcon(style.standardIcon(QStyle::SP_MessageBoxCritical));
    icon->setIconSize(iconSize);
    auto *column = new QVBoxLayout;
    column->addWidget(icon);
    column->addStretch(1);
    return column;
}

} // namespace

CrashReportWidget::CrashReportWidget(QWidget *parent)
    : TranslatableWidget(parent)
    , titleLabel(labelInFont(FontWeight::SemiBold))
    , messageLabel(new QLabel)
    , instructionsLabel(new QLabel)
    , dateTimeCaption(new QLabel)
    , dateTimeValue(valueLabel<QLabel>())
    , serialCaption(new QLabel)
    , serialValue(valueLabel<SerialNumberLabel>())
    , typeCaption(new QLabel)
    , typeValue(valueLabel<QLabel>())
    , versionCaption(new QLabel)
    , versionValue(valueLabel<QLabel>())
    , commentsCaption(new QLabel)
    , commentsEdit(new CommentsEdit)
    , countdownLine(new QWidget)
    , countdownPrefix(labelInFont(FontWeight::Regular))
    , countdownNumber(labelInFont(FontWeight::SemiBold))
    , countdownSuffix(labelInFont(FontWeight::Regular))
    , emailButton(actionButton())
    , saveButton(actionButton())
    , restartButton(actionButton())
    , shutdownButton(actionButton())
{
    // Closed by hand it would leave the operator with an empty backdrop and no way on.
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    instructionsLabel->setWordWrap(true);
    commentsEdit->setTabChangesFocus(true); // or the keyboard never gets to the buttons
    fillCountdownLine();
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(makeReport());
    layout->addLayout(makeButtonRow());
    // Nothing can be mailed from the appliance yet; whoever emits the signal gets a
    // package built and thrown away.
    emailButton->hide();
    countdownLine->hide();
    connectButtons();
    alignValues();
    commentsEdit->setFocus();
}

QGridLayout *CrashReportWidget::makeReport()
{
    auto *grid = new QGridLayout;
    grid->addLayout(iconColumn(*style()), 0, 0, gridRows, 1);
    int row = 0;
    for (QLabel *text : {titleLabel, messageLabel, instructionsLabel})
        grid->addWidget(text, row++, 1, 1, 2);
    const std::pair<QLabel *, QWidget *> facts[] = {{dateTimeCaption, dateTimeValue},
                                                    {serialCaption, serialValue},
                                                    {typeCaption, typeValue},
                                                    {versionCaption, versionValue},
                                                    {commentsCaption, commentsEdit}};
    for (const auto &[caption, value] : facts) {
        grid->addWidget(caption, row, 1, Qt::AlignRight);
        grid->addWidget(value, row++, 2);
    }
    // Beside the first line of the box, not half-way down.
    const int firstLine =
        commentsEdit->frameWidth() + qRound(commentsEdit->document()->documentMargin());
    commentsCaption->setContentsMargins(0, firstLine, 0, 0);
    commentsCaption->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    return grid;
}

void CrashReportWidget::fillCountdownLine()
{
    auto *line = new QHBoxLayout(countdownLine);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(countdownPrefix->fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    for (QLabel *part : {countdownPrefix, countdownNumber, countdownSuffix})
        line->addWidget(part);
}

QBoxLayout *CrashReportWidget::makeButtonRow()
{
    auto *row = new QHBoxLayout;
    row->addWidget(countdownLine);
    row->addStretch(1);
    for (QPushButton *button : {emailButton, saveButton, restartButton, shutdownButton})
        row->addWidget(button);
    return row;
}

void CrashReportWidget::connectButtons()
{
    for (QPushButton *button : {emailButton, saveButton, restartButton, shutdownButton})
        button->installEventFilter(this);
    connect(emailButton, &QPushButton::clicked, this, &CrashReportWidget::sendRequested);
    connect(saveButton, &QPushButton::clicked, this, &CrashReportWidget::saveRequested);
    connect(restartButton, &QPushButton::clicked, this, &CrashReportWidget::restartRequested);
    connect(shutdownButton, &QPushButton::clicked, this, &CrashReportWidget::shutdownRequested);
}

void CrashReportWidget::setDateTime(const QDateTime &dateTime)
{
    dateTimeValue->setText(dateTime.toString(QStringLiteral("hh:mm:ss on dddd d MMMM yyyy")));
    tieCaptionsToValues();
}

void CrashReportWidget::setClientInfo(const Tessel::SharedClientInfo *info)
{
    serialValue->setText(info ? withoutVariants(Tessel::serialNumber(*info)) : QString());
    typeValue->setText(info ? deviceTypeName(info->deviceType) : QString());
    versionValue->setText(info ? Tessel::toQString(info->version, false) : QString());
    tieCaptionsToValues();
}

void CrashReportWidget::setCountdown(int seconds)
{
    countdownNumber->setText(QString::number(seconds));
    countdownLine->setVisible(seconds != 0);
    describeCountdown();
}

QString CrashReportWidget::comments() const
{
    return commentsEdit->document()->toPlainText();
}

void CrashReportWidget::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
    if (event->key() == Qt::Key_Escape)
        return;
    TranslatableWidget::keyPressEvent(event);
}

void CrashReportWidget::closeEvent(QCloseEvent *event)
{
    if (event->spontaneous())
        event->ignore();
    else
        TranslatableWidget::closeEvent(event);
}

bool CrashReportWidget::eventFilter(QObject *watched, QEvent *event)
{
    auto *button = qobject_cast<QPushButton *>(watched);
    if (!button || event->type() != QEvent::KeyPress)
        return TranslatableWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return TranslatableWidget::eventFilter(watched, event);
    button->animateClick();
    return true;
}

void CrashReportWidget::retranslate()
{
    titleLabel->setText(tr("Sorry, something went wrong..."));
    messageLabel->setText(
        tr("An error has occurred and the System Processor application needs to restart."));
    instructionsLabel->setText(
        tr("A crash report has been created, which you can save to a USB disk.  Please email the "
           "crash report file to the Tovask service department (support@tovask.example)."));
    dateTimeCaption->setText(tr("Date & Time:"));
    serialCaption->setText(tr("Serial Number:"));
    typeCaption->setText(tr("Type:"));
    versionCaption->setText(tr("Version:"));
    commentsCaption->setText(tr("Comments:"));
    countdownPrefix->setText(tr("Restarting automatically in"));
    countdownSuffix->setText(tr("seconds."));
    emailButton->setText(tr("Email"));
    saveButton->setText(tr("Save"));
    restartButton->setText(tr("Restart"));
    shutdownButton->setText(tr("Shutdown"));
    wrapLongTexts();
    tieCaptionsToValues();
    describeCountdown();
}

void CrashReportWidget::wrapLongTexts()
{
    const int sentence = wrappedWidth(*messageLabel, widestSentence);
    messageLabel->setWordWrap(sentence > 0);
    messageLabel->setMinimumWidth(sentence);
    // Held to its width both ways: the number stands right behind it.
    const int prefix = wrappedWidth(*countdownPrefix, widestCountdownPrefix);
    countdownPrefix->setWordWrap(prefix > 0);
    countdownPrefix->setMinimumWidth(prefix);
    countdownPrefix->setMaximumWidth(prefix > 0 ? prefix : QWIDGETSIZE_MAX);
}

void CrashReportWidget::changeEvent(QEvent *event)
{
    TranslatableWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        alignValues();
}

/**
 * Next to their captions: left to themselves, numbers and dates would keep to the left
 * of a screen that runs from right to left.
 */
void CrashReportWidget::alignValues()
{
    const auto leading = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    for (QLabel *value : {dateTimeValue, serialValue, typeValue, versionValue})
        value->setAlignment(leading | Qt::AlignAbsolute | Qt::AlignVCenter);
}

/**
 * What a screen reader says of a value begins with its caption. Buddies would do so
 * too, but take the ampersand of "Date & Time:" for a shortcut.
 */
void CrashReportWidget::tieCaptionsToValues()
{
    const std::pair<const QLabel *, QLabel *> facts[] = {{dateTimeCaption, dateTimeValue},
                                                         {serialCaption, serialValue},
                                                         {typeCaption, typeValue},
                                                         {versionCaption, versionValue}};
    for (const auto &[caption, value] : facts)
        value->setAccessibleName(caption->text() + QLatin1Char(' ') + value->text());
    commentsEdit->setAccessibleName(commentsCaption->text());
}

/** Each new number is told to a screen reader as the sentence that the line reads as. */
void CrashReportWidget::describeCountdown()
{
    if (countdownLine->isHidden())
        countdownLine->setAccessibleName(QString());
    else
        countdownLine->setAccessibleName(
            QStringLiteral("%1 %2 %3")
                .arg(countdownPrefix->text(), countdownNumber->text(), countdownSuffix->text()));
}

// Here and not with the other classes': whoever links this screen gets no end actions.
#include "moc_crash_report_widget.cpp" // NOLINT(bugprone-suspicious-include)
