#include "vireling/gallery/gallery_window.h"

#include "vireling/gallery/pages.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QScrollArea>

namespace Vireling {

namespace {

constexpr QSize windowSize(1280, 860);
constexpr int listWidth = 180;

} // namespace

GalleryWindow::GalleryWindow(Controls controls)
    : list(new QListWidget)
    , area(new QScrollArea)
    , shownControls(controls)
{
    setWindowTitle(QStringLiteral("Vireling"));
    for (const GalleryPage &page : galleryPages())
        list->addItem(QLatin1String(page.name));
    list->setFrameShape(QFrame::NoFrame);
    list->setFixedWidth(listWidth * logicalDpiX() / 96);
    list->setAccessibleName(QStringLiteral("Pages"));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(0);
    row->addWidget(list);
    row->addWidget(area, 1);
    connect(list, &QListWidget::currentRowChanged, this, &GalleryWindow::showPage);
    list->setCurrentRow(0);
    resize(windowSize * logicalDpiX() / 96.0);
}

void GalleryWindow::openPage(const QString &name)
{
    const auto found = list->findItems(name, Qt::MatchExactly);
    if (!found.isEmpty())
        list->setCurrentItem(found.first());
}

void GalleryWindow::showPage(int row)
{
    QWidget *page = galleryPages()[size_t(row)].make(nullptr);
    page->setEnabled(shownControls == Controls::Enabled);
    area->setWidget(page); // deletes the one before
}

} // namespace Vireling
