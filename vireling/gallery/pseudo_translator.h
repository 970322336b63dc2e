#pragma once

#include <QTranslator>

namespace Vireling {

/**
 * Translates every text into itself, in brackets, with accents and two fifths longer:
 * what is not translated, cut off or too narrow shows at once. Mnemonics, line
 * breaks, markup and places for arguments stay.
 */
class PseudoTranslator : public QTranslator
{
public:
    using QTranslator::QTranslator;

    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int count) const override;
    bool isEmpty() const override { return false; }
};

/** What the translator makes of a text. */
QString pseudoTranslation(const QString &text);

} // namespace Vireling
