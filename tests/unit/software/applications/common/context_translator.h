#pragma once

#include <QTranslator>

namespace TestSupport {

/** Tells in which context a text was translated: "Context|text". */
class ContextTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return QStringLiteral("%1|%2").arg(QLatin1String(context), QLatin1String(source));
    }
    bool isEmpty() const override { return false; }
};

} // namespace TestSupport
