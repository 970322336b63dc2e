#include "common/file_panel_model.h"

#include "vireling/style_icon_engine/style_icons.h"

#include <QFileInfo>

TwoIconProvider::TwoIconProvider()
    : folderIcon(Vireling::makeIcon(QStringLiteral("vireling:/common/icons/folder.svg")))
    , fileIcon(Vireling::makeIcon(QStringLiteral("vireling:/common/icons/file.svg")))
{}

QIcon TwoIconProvider::icon(IconType type) const
{
    return type == File ? fileIcon : folderIcon;
}

QIcon TwoIconProvider::icon(const QFileInfo &info) const
{
    return info.isDir() ? folderIcon : fileIcon;
}

FilePanelModel::FilePanelModel(QObject *parent)
    : QFileSystemModel(parent)
{
    setIconProvider(&icons);
    setReadOnly(false);
    setRootPath(QStringLiteral("/"));
}
