#pragma once

#include <QWidget>

#include <memory>

namespace Vireling {
struct GalleryPage;
}

/** A page of the gallery, shown and active, at the least size it asks for. */
std::unique_ptr<QWidget> showPage(const Vireling::GalleryPage &page);

/** One row a page in a test's data, in the column "page" as an index into galleryPages(). */
void addPageRows();
