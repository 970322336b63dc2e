#include "support/golden_images.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cstdlib>

namespace TestSupport {

namespace {

/** Blending in other instruction sets rounds otherwise, by one or two steps. */
constexpr int channelTolerance = 3;

bool differs(QRgb one, QRgb other)
{
    const int distances[] = {qRed(one) - qRed(other), qGreen(one) - qGreen(other),
                             qBlue(one) - qBlue(other), qAlpha(one) - qAlpha(other)};
    return std::any_of(std::begin(distances), std::end(distances),
                       [](int distance) { return std::abs(distance) > channelTolerance; });
}

struct Difference
{
    QImage picture;
    int pixels = 0;
};

/** Of images of one size and QImage::Format_ARGB32. */
Difference difference(const QImage &actual, const QImage &expected)
{
    Difference result{QImage(actual.size(), QImage::Format_RGB32), 0};
    result.picture.fill(Qt::black);
    for (int y = 0; y < actual.height(); ++y)
        for (int x = 0; x < actual.width(); ++x)
            if (differs(actual.pixel(x, y), expected.pixel(x, y))) {
                result.picture.setPixel(x, y, qRgb(255, 255, 255));
                ++result.pixels;
            }
    return result;
}

bool saveWithFolder(const QImage &image, const QString &path)
{
    return QDir().mkpath(QFileInfo(path).path()) && image.save(path);
}

QString failed(const QString &name, const QString &reason, const QString &failures)
{
    return QStringLiteral("%1: %2; see %3").arg(name, reason, QDir(failures).filePath(name));
}

} // namespace

GoldenFolders goldenFolders()
{
    return {QStringLiteral(R4_GOLDEN_FOLDER), QStringLiteral(R4_GOLDEN_FAILURES_FOLDER)};
}

QString compareWithGolden(const QString &name, const QImage &actual, const GoldenFolders &folders)
{
    const QString reference = QDir(folders.references).filePath(name + ".png");
    const QImage comparable = actual.convertToFormat(QImage::Format_ARGB32);
    if (qEnvironmentVariableIsSet("R4_RENEW_GOLDEN"))
        return saveWithFolder(comparable, reference) ? name + ": renewed"
                                                     : name + ": could not be renewed";

    const QString failure = QDir(folders.failures).filePath(name);
    const QImage expected = QImage(reference).convertToFormat(QImage::Format_ARGB32);
    if (expected.isNull()) {
        saveWithFolder(comparable, failure + "_actual.png");
        return failed(name, "there is no reference image", folders.failures);
    }
    const bool sameSize = comparable.size() == expected.size();
    const Difference found = sameSize ? difference(comparable, expected) : Difference();
    if (sameSize && found.pixels == 0)
        return QString();
    saveWithFolder(comparable, failure + "_actual.png");
    saveWithFolder(expected, failure + "_expected.png");
    if (!sameSize)
        return failed(name, "the size is another", folders.failures);
    saveWithFolder(found.picture, failure + "_difference.png");
    return failed(name, QStringLiteral("%1 pixels differ").arg(found.pixels), folders.failures);
}

} // namespace TestSupport
