#include "vireling/gallery/samples.h"

#include "vireling/gallery/page_widget.h"
#include "vireling/style_icon_engine/style_icons.h"

#include <QStandardItemModel>

namespace Vireling {

namespace {

struct SampleFile
{
    const char *name;
    const char *size;
    const char *saved;
};

constexpr SampleFile sampleFiles[]{
    {"Crash report", "12 kB", "Monday"},   {"Core image", "48 MB", "Monday"},
    {"System log", "1.5 MB", "Tuesday"},   {"Settings", "3 kB", "Tuesday"},
    {"Service record", "27 kB", "Friday"}, {"Screen picture", "240 kB", "Saturday"},
};

QList<QStandardItem *> fileRow(PageWidget *page, const SampleFile &file, const QIcon &icon)
{
    QList<QStandardItem *> row;
    for (const char *text : {file.name, file.size, file.saved})
        row.append(page->say(new QStandardItem, &QStandardItem::setText, text));
    row.first()->setIcon(icon);
    row.at(1)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return row;
}

QStandardItemModel *makeModel(PageWidget *page)
{
    auto *model = new QStandardItemModel(0, 3, page);
    page->addText([=] {
        model->setHorizontalHeaderLabels(
            {galleryText("Name"), galleryText("Size"), galleryText("Saved")});
    });
    return model;
}

} // namespace

QIcon storageIcon()
{
    return makeIcon(QStringLiteral("vireling:/common/icons/internal_storage.svg"));
}

QIcon usbKeyIcon()
{
    return makeIcon(QStringLiteral("vireling:/common/icons/usb_key.svg"));
}

QIcon newFolderIcon()
{
    return makeIcon(QStringLiteral("vireling:/common/icons/new_folder.svg"));
}

QIcon parentFolderIcon()
{
    return makeIcon(QStringLiteral("vireling:/common/icons/up_directory.svg"));
}

QStandardItemModel *makeFileTree(PageWidget *page)
{
    QStandardItemModel *model = makeModel(page);
    for (const SampleFile &place :
         {SampleFile{"Internal storage", "", ""}, SampleFile{"USB key", "", ""}}) {
        const bool first = model->rowCount() == 0;
        const auto row = fileRow(page, place, first ? storageIcon() : usbKeyIcon());
        model->appendRow(row);
        for (const SampleFile &file : sampleFiles)
            row.first()->appendRow(fileRow(page, file, QIcon()));
        row.first()->child(2)->appendRow(fileRow(page, sampleFiles[3], QIcon()));
    }
    return model;
}

QStandardItemModel *makeFileTable(PageWidget *page)
{
    QStandardItemModel *model = makeModel(page);
    for (const SampleFile &file : sampleFiles)
        model->appendRow(fileRow(page, file, storageIcon()));
    return model;
}

} // namespace Vireling
