#pragma once

#include <QFileIconProvider>
#include <QFileSystemModel>

/** Folders and files have one icon each, whatever is in them: none is looked at for it. */
class TwoIconProvider : public QFileIconProvider
{
public:
    /** GUI thread. The icons may then be asked for on any thread. */
    TwoIconProvider();

    QIcon icon(IconType type) const override;
    QIcon icon(const QFileInfo &info) const override;

private:
    QIcon folderIcon;
    QIcon fileIcon;
};

/** What must outlive the model's thread, which asks it for icons. */
struct FilePanelModelIcons
{
    TwoIconProvider icons;
};

/**
 * The whole file system as the file panel shows it, writable. Looking up an icon by
 * content or theme for each file would make opening a full key slow.
 */
class FilePanelModel : private FilePanelModelIcons, public QFileSystemModel
{
public:
    explicit FilePanelModel(QObject *parent);
};
