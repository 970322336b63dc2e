#pragma once

#include "vireling/palette/theme.h"
#include "vireling/style/style.h"

#include "support/style_dpi.h"
#include "support/style_options.h"

#include <QApplication>
#include <QImage>
#include <QMetaEnum>
#include <QPainter>
#include <QtTest>

#include <initializer_list>
#include <vector>

/*
 * What the programs that call every enumerator of the style share: the
 * circumstances to call it in, and a painter that notices what a call did to it.
 */
namespace StyleSweep {

using namespace Vireling;
using TestSupport::OptionKind;

struct Circumstance
{
    QRect rect;
    QStyle::State state;
    Qt::LayoutDirection direction;
    int dotsPerInch;
};

/** The rectangle of the calls whose drawing is checked for staying inside. */
inline QRect ordinaryRect()
{
    return {30, 30, 160, 40};
}

inline std::vector<Circumstance> circumstances()
{
    constexpr QStyle::State on = QStyle::State_Enabled | QStyle::State_Active;
    const QStyle::State states[] = {
        on,
        on | QStyle::State_Horizontal,
        on | QStyle::State_MouseOver,
        on | QStyle::State_Sunken | QStyle::State_MouseOver,
        on | QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange,
        on | QStyle::State_On | QStyle::State_Selected,
        on | QStyle::State_NoChange | QStyle::State_Raised,
        on | QStyle::State_Open | QStyle::State_Children | QStyle::State_Item |
            QStyle::State_Sibling,
        on | QStyle::State_AutoRaise | QStyle::State_ReadOnly | QStyle::State_Editing,
        QStyle::State_Enabled | QStyle::State_Selected, // in an inactive window
        QStyle::State_Active | QStyle::State_On | QStyle::State_HasFocus,
        QStyle::State_None,
    };
    std::vector<Circumstance> all;
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft})
        for (const QStyle::State state : states)
            all.push_back({ordinaryRect(), state, direction, 96});
    for (const QRect &rect : {QRect(), QRect(30, 30, 1, 1), QRect(30, 30, 160, 3),
                              QRect(30, 30, 3, 100), QRect(30, 30, -20, -10)})
        all.push_back({rect, on, Qt::RightToLeft, 96});
    all.push_back({ordinaryRect(), on, Qt::LeftToRight, 192});
    return all;
}

inline void apply(const Circumstance &circumstance, QStyleOption &option)
{
    option.rect = circumstance.rect;
    option.state = circumstance.state;
    option.direction = circumstance.direction;
    option.fontMetrics = TestSupport::fontMetricsAt(circumstance.dotsPerInch);
}

/** An option as its constructor leaves it. */
inline void makeBare(QStyleOption &option)
{
    option.rect = QRect();
    option.state = QStyle::State_None;
    option.palette = QPalette();
}

/** The first value of programs' own elements: no element, and Qt warns of it. */
inline bool isCustomBase(const char *name)
{
    return QByteArray(name).endsWith("CustomBase");
}

constexpr int optionKindCount = int(OptionKind::NOptionKinds);

/** A painter on a fresh picture, in a state unlike a new painter's. */
class WatchedPainter
{
public:
    WatchedPainter()
        : image(260, 140, QImage::Format_ARGB32_Premultiplied)
    {
        image.fill(Qt::transparent);
        painter.begin(&image);
        painter.setPen(QPen(Qt::magenta, 3, Qt::DashLine)); // outer state, see changed()
        painter.save();
        painter.setPen(QPen(Qt::green, 2, Qt::DotLine));
        painter.setBrush(QBrush(Qt::yellow, Qt::Dense4Pattern));
        painter.setFont(QFont(QStringLiteral("DejaVu Sans"), 7));
        painter.setClipRect(QRect(0, 0, 259, 139));
        painter.setOpacity(0.75);
        painter.setRenderHint(QPainter::TextAntialiasing);
    }

    QPainter *operator&() { return &painter; }

    /** What a call left changed, in words; empty when all is as it was. Ends the painting. */
    QByteArray changed()
    {
        QByteArray what;
        const auto expect = [&](bool same, const char *name) {
            if (!same)
                what += name;
        };
        expect(painter.pen() == QPen(Qt::green, 2, Qt::DotLine), " pen");
        expect(painter.brush() == QBrush(Qt::yellow, Qt::Dense4Pattern), " brush");
        expect(painter.font().pointSize() == 7, " font");
        expect(painter.transform() == QTransform(), " transform");
        expect(painter.clipBoundingRect() == QRectF(0, 0, 259, 139), " clip");
        expect(qFuzzyCompare(painter.opacity(), 0.75), " opacity");
        expect(painter.renderHints() == QPainter::TextAntialiasing, " hints");
        expect(painter.compositionMode() == QPainter::CompositionMode_SourceOver, " mode");
        expect(painter.backgroundMode() == Qt::TransparentMode, " background");
        painter.restore();
        expect(painter.pen() == QPen(Qt::magenta, 3, Qt::DashLine), " depth of saved states");
        painter.end();
        return what;
    }

    /** The rectangle around everything that was drawn. */
    QRect drawnRect() const
    {
        QRect drawn;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (qAlpha(image.pixel(x, y)) > 0)
                    drawn |= QRect(x, y, 1, 1);
        return drawn;
    }

private:
    QImage image;
    QPainter painter;
};

} // namespace StyleSweep
