#include "crash_reporter/xml_text.h"

namespace {

bool isXmlCodeUnit(QChar c)
{
    if (c < QLatin1Char(' '))
        return c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r');
    return c.unicode() < 0xFFFE;
}

} // namespace

QString xmlText(QString text)
{
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool startsPair =
            c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (startsPair)
            ++i;
        else if (c.isSurrogate() || !isXmlCodeUnit(c))
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}
