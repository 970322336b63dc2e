#pragma once

#include "vireling/style/element_context.h"

#include <QIcon>
#include <QString>

#include <optional>

namespace Vireling {

/*
 * Icon and text on buttons of every kind.
 */

/**
 * What QPushButton, QToolButton, QComboBox and QCommonStyle all count, in unscaled
 * pixels, between icon and text.
 */
constexpr int countedIconSpacing = 4;

/**
 * The icon in its mode for the context's state, centred in `rect`, at most `size` large.
 * A `tint` replaces its colours.
 */
void drawIcon(const ElementContext &context, const QRect &rect, const QIcon &icon,
              const QSize &size, const std::optional<QColor> &tint = std::nullopt);

/** The flag that shows or hides the underline of a mnemonic. */
int mnemonicFlag(const ElementContext &context);

struct ButtonLabel
{
    QIcon icon;
    QSize iconSize;
    QString text;
    QColor colour;
    Qt::ArrowType arrow = Qt::NoArrow; ///< a chevron in the icon's place
};

/** Text and the icon before it, centred together; they begin at the edge where space is short. */
void drawButtonLabel(const ElementContext &context, const QRect &rect, const ButtonLabel &label);

} // namespace Vireling
