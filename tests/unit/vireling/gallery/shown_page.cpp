#include "shown_page.h"

#include "vireling/gallery/pages.h"

#include <QApplication>
#include <QTest>

std::unique_ptr<QWidget> showPage(const Vireling::GalleryPage &page)
{
    std::unique_ptr<QWidget> widget(page.make(nullptr));
    widget->ensurePolished();
    widget->resize(widget->sizeHint());
    widget->show();
    QApplication::setActiveWindow(widget.get());
    if (!QTest::qWaitForWindowExposed(widget.get()))
        return nullptr;
    QCoreApplication::sendPostedEvents(); // layouts that were invalidated while showing
    widget->resize(widget->sizeHint());
    QCoreApplication::processEvents();
    return widget;
}

void addPageRows()
{
    QTest::addColumn<int>("page");
    const auto &pages = Vireling::galleryPages();
    for (int index = 0; index < int(pages.size()); ++index)
        QTest::newRow(pages[size_t(index)].name) << index;
}
