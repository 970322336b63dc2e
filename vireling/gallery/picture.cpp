#include "vireling/gallery/picture.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QImage>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

namespace Vireling {

namespace {

/** At 96 dots per inch; pages that need more get it. */
constexpr QSize leastSize(960, 640);

/**
 * What moves into place in time, such as Qt's columns and sub-windows, is drawn anew
 * more often than this, and has arrived after that. Milliseconds.
 */
constexpr int frameTime = 40;
constexpr int longestMove = 500;

QImage pictureAfter(int milliseconds, QWidget &page)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
    return page.grab().toImage();
}

/** The page once nothing moves any more; some pages have bars that are busy for ever. */
QImage settledPicture(QWidget &page)
{
    QElapsedTimer timer;
    timer.start();
    QImage before = pictureAfter(0, page);
    QImage picture = pictureAfter(frameTime, page);
    while (picture != before && timer.elapsed() < longestMove) {
        before = picture;
        picture = pictureAfter(frameTime, page);
    }
    return picture;
}

} // namespace

bool savePicture(QWidget &page, const QString &file)
{
    page.ensurePolished();
    page.resize(page.sizeHint().expandedTo(leastSize * page.logicalDpiX() / 96.0));
    page.setAttribute(Qt::WA_KeyboardFocusChange); // as if it had been reached with the Tab key
    page.show();
    // No window manager activates a window on the off-screen platform.
    QApplication::setActiveWindow(&page);
    page.setFocus(Qt::TabFocusReason);
    return settledPicture(page).save(file, "PNG");
}

} // namespace Vireling
