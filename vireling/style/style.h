#pragma once

#include "vireling/palette/current_palette.h"
#include "vireling/palette/palette.h"
#include "vireling/style/line_width.h"

#include <QCommonStyle>

#include <optional>

class QLineEdit;

namespace Vireling {

class BusyIndicatorAnimator;
class StyleInputFocusHelper;

/** On a line edit: how many characters wide its text area is; see setDisplayCharCount(). */
constexpr char displayCharCountProperty[] = "vrl_style_display_char_count";

/** On the grid layout of a message box: the QSpacerItem the style added to it. */
constexpr char messageBoxSpacerProperty[] = "vrl_style_message_box_spacer";

/**
 * The house style: an application-wide QStyle that draws every standard control
 * from the roles of one palette, with sizes in design pixels at 96 dots per inch.
 * Needs no particular program around it: QApplication::setStyle(new Style) is all.
 * GUI thread, like every QStyle.
 *
 * Where things are: style_dispatch.cpp says which function of style/elements draws
 * what; style_metrics.cpp and style_hints.cpp hold the numbers and the answers,
 * style_polish.cpp what is set on widgets.
 */
class Style : public QCommonStyle, public PaletteProvider
{
    Q_OBJECT
    Q_INTERFACES(Vireling::PaletteProvider)

public:
    /** In the dark theme's colours. */
    Style();
    explicit Style(const Palette &palette);
    ~Style() override;

    const Palette &palette() const override { return ownPalette; }

    /**
     * A design value at 96 dots per inch in pixels, rounded half away from zero.
     * The density is the option's, else the widget's, else the application's; both
     * may be null.
     */
    int scaled(qreal designPixels, const QStyleOption *option, const QWidget *widget) const;
    /** The same without rounding. */
    qreal scaledExactly(qreal designPixels, const QStyleOption *option,
                        const QWidget *widget) const;

    /** The width of a kind of line in pixels; not rounded. Both may be null. */
    qreal lineWidth(LineWidth kind, const QStyleOption *option, const QWidget *widget) const;

    /**
     * Makes the text area of `lineEdit` as wide as `count` times the letter x. An
     * empty `count` leaves what was set and only has the geometry worked out again.
     */
    static void setDisplayCharCount(QLineEdit *lineEdit, std::optional<int> count);

    /**
     * What setDisplayCharCount() set; a value of another type is converted, 0 if it
     * cannot be. Empty without the property. `widget` may be null.
     */
    static std::optional<int> displayCharCount(const QWidget *widget);

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget = nullptr) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option,
                         const QWidget *widget = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                         SubControl subControl, const QWidget *widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contentsSize,
                           const QWidget *widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;

    QPalette standardPalette() const override;
    /** Arrows, the clear button and the window controls are ours, the rest QCommonStyle's. */
    QIcon standardIcon(StandardPixmap standardIcon, const QStyleOption *option = nullptr,
                       const QWidget *widget = nullptr) const override;

    using QCommonStyle::polish;
    using QCommonStyle::unpolish;
    /** The style's palette becomes the application's, also where a platform theme has one. */
    void polish(QPalette &palette) override;
    void polish(QWidget *widget) override;
    void unpolish(QWidget *widget) override;

private:
    const Palette ownPalette;
    StyleInputFocusHelper *inputFocusHelper; // owned: our child
    BusyIndicatorAnimator *busyAnimator;     // owned: our child
};

} // namespace Vireling
