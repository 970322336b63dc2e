#pragma once

#include "palette_style.h"
#include "vireling/style_icon_engine/style_icon_engine.h"

#include <QApplication>
#include <QFile>
#include <QPixmapCache>
#include <QTemporaryDir>

// What the tests of the icon engine share.

// Far apart in every channel, so that a wrong weight or a wrong role shows.
inline const QColor drawnColour(200, 40, 0);
inline const QColor baseColour(0, 140, 250);

/** The left half drawn, the right half left transparent. */
constexpr char halfDrawn[] = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16 16\">"
                             "<path fill=\"#c82800\" d=\"M0 0h8v16H0z\"/></svg>";

constexpr char twiceAsWide[] = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 32 16\">"
                               "<path fill=\"#c82800\" d=\"M0 0h32v16H0z\"/></svg>";

inline void fadeToward(const QColor &base)
{
    Vireling::Palette palette;
    palette.setBrush(QPalette::Base, base);
    QApplication::setStyle(new PaletteStyle(palette));
}

inline bool isCached(const QString &key)
{
    QPixmap unused;
    return QPixmapCache::find(key, &unused);
}

/** The number the next icon to be made will have. */
inline QString nextEngineNumber()
{
    const Vireling::StyleIconEngineData last{QString()};
    const uint next = (last.engineNumber().toUInt(nullptr, 16) + 1) & 0xffff;
    return QString("%1").arg(next, 4, 16, QChar('0'));
}

/** A folder of pictures that goes with the test. */
class PictureFolder
{
public:
    QString write(const QString &name, const QByteArray &svg) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(svg) != svg.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }
    QString path(const QString &name) const { return folder.filePath(name); }

private:
    QTemporaryDir folder;
};

/** Counts what Qt reports while it lives, in place of the test's log. One at a time. */
class MessageCounter
{
public:
    MessageCounter()
        : previous(qInstallMessageHandler(add))
    {
        counted = 0;
    }
    ~MessageCounter() { qInstallMessageHandler(previous); }
    Q_DISABLE_COPY(MessageCounter)

    int count() const { return counted; }

private:
    static void add(QtMsgType, const QMessageLogContext &, const QString &) { ++counted; }

    static inline int counted = 0;
    const QtMessageHandler previous;
};
