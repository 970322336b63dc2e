#include "vireling/gallery/pseudo_translator.h"

#include <QRegularExpression>
#include <QtMath>

namespace Vireling {

namespace {

constexpr double lengthening = 0.4;

/** Contexts whose texts Qt reads itself: names of keys, and which way the language runs. */
constexpr const char *readByQt[]{"QShortcut", "QApplication", "QGuiApplication"};

QChar accented(QChar letter)
{
    static const QString plain = QStringLiteral("AEIOUYaceinouyzs");
    static const QString marked = QStringLiteral(u"ÅÉÎÖÛÝåçéîñöûýžš");
    const int index = plain.indexOf(letter);
    return index < 0 ? letter : marked.at(index);
}

/** Markup, entities and places for arguments. */
const QRegularExpression &untouched()
{
    static const QRegularExpression pattern(
        QStringLiteral("</?[A-Za-z][^<>]*>|&[a-z]+;|%[0-9LnpvmQ]+"));
    return pattern;
}

QString accentedText(const QString &text)
{
    QString result = text;
    for (QChar &letter : result)
        letter = accented(letter);
    auto matches = untouched().globalMatch(text);
    while (matches.hasNext()) {
        const auto match = matches.next();
        result.replace(match.capturedStart(), match.capturedLength(), match.captured());
    }
    return result;
}

/** Words of three letters, so that a text that may wrap still can. */
QString padding(int length)
{
    QString result;
    while (result.size() < length)
        result += result.size() % 4 == 0 ? QLatin1Char(' ') : QLatin1Char('~');
    return result;
}

} // namespace

QString pseudoTranslation(const QString &text)
{
    if (text.trimmed().isEmpty())
        return text;
    const int extra = qCeil(text.size() * lengthening);
    return QLatin1Char('[') + accentedText(text) + padding(extra) + QLatin1Char(']');
}

QString PseudoTranslator::translate(const char *context, const char *sourceText, const char *,
                                    int) const
{
    for (const char *name : readByQt)
        if (qstrcmp(context, name) == 0)
            return QString();
    return pseudoTranslation(QString::fromUtf8(sourceText));
}

} // namespace Vireling
