#pragma once

#include <QFile>
#include <QSet>
#include <QString>
#include <QXmlStreamReader>

/** What an SVG file is made of, as far as tests ask. */
struct SvgContents
{
    QSet<QString> elements;
    QSet<QString> colours; ///< every fill and stroke but "none", as written
    QString viewBox;
    bool wellFormed = false;
};

inline SvgContents svgContents(const QString &path)
{
    SvgContents contents;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return contents;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        contents.elements.insert(xml.name().toString());
        for (const QXmlStreamAttribute &attribute : xml.attributes()) {
            const QString name = attribute.name().toString();
            const QString value = attribute.value().toString();
            if (name == "viewBox")
                contents.viewBox = value;
            if ((name == "fill" || name == "stroke") && value != "none")
                contents.colours.insert(value);
        }
    }
    contents.wellFormed = !xml.hasError();
    return contents;
}
