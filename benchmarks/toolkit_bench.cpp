#include "vireling/gallery/pages.h"
#include "vireling/palette/fonts.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"
#include "vireling/style_icon_engine/style_icons.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPixmapCache>
#include <QStyleFactory>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

/*
 * Paints every page of the gallery in our style and in Fusion, by turns in one
 * process, and compares an icon out of the cache with one rendered. Prints
 * "name ours theirs" in milliseconds of the fastest round, one line each, for
 * bench.py.
 */

namespace {

constexpr int rounds = 15;
constexpr int paintingsPerRound = 4;
constexpr int cachedIcons = 2000;

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

double paint(QWidget &page, QImage &image)
{
    QElapsedTimer timer;
    timer.start();
    for (int number = 0; number < paintingsPerRound; ++number)
        page.render(&image);
    return milliseconds(timer) / paintingsPerRound;
}

/** A page laid out and polished in the style that is the application's now. */
struct Exhibit
{
    explicit Exhibit(const Vireling::GalleryPage &page)
        : widget(page.make(nullptr))
    {
        widget->resize(widget->sizeHint().expandedTo(QSize(960, 640)));
        widget->setAttribute(Qt::WA_DontShowOnScreen);
        widget->show();
        QApplication::processEvents();
        image = QImage(widget->size(), QImage::Format_ARGB32_Premultiplied);
        widget->render(&image); // fills the caches
    }

    std::unique_ptr<QWidget> widget;
    QImage image;
};

void useFusion()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("fusion")));
    QApplication::setPalette(Vireling::themePalette(Vireling::Theme::Dark));
    QApplication::setFont(Vireling::styleFont(Vireling::applicationFontSlot));
}

/** The fastest round in the style that `install` makes the application's. */
template <typename Install>
double fastest(const Vireling::GalleryPage &page, Install install, double before)
{
    install();
    Exhibit exhibit(page);
    double best = before;
    for (int round = 0; round < rounds; ++round)
        best = std::min(best, paint(*exhibit.widget, exhibit.image));
    return best;
}

void comparePages()
{
    const auto useOurs = [] { Vireling::installAppearance(Vireling::Theme::Dark); };
    for (const Vireling::GalleryPage &page : Vireling::galleryPages()) {
        double ours = 1e9;
        double theirs = 1e9;
        for (int turn = 0; turn < 2; ++turn) {
            theirs = fastest(page, useFusion, theirs);
            ours = fastest(page, useOurs, ours);
        }
        std::printf("page:%s %.4f %.4f\n", page.name, ours, theirs);
    }
}

void compareIcons()
{
    Vireling::installAppearance(Vireling::Theme::Dark);
    const QIcon icon = Vireling::styleIcon(Vireling::StyleIcon::WindowRestore);
    double rendered = 1e9;
    double cached = 1e9;
    QElapsedTimer timer;
    for (int round = 0; round < rounds; ++round) {
        QPixmapCache::clear();
        timer.start();
        icon.pixmap(QSize(16, 16));
        rendered = std::min(rendered, milliseconds(timer));
        timer.start();
        for (int number = 0; number < cachedIcons; ++number)
            icon.pixmap(QSize(16, 16));
        cached = std::min(cached, milliseconds(timer) / cachedIcons);
    }
    std::printf("icon %.6f %.6f\n", rendered, cached);
}

} // namespace

int main(int argc, char **argv)
{
    Vireling::initialiseHighDpi();
    Vireling::initialiseResources();
    const QApplication app(argc, argv);
    comparePages();
    compareIcons();
    return 0;
}
