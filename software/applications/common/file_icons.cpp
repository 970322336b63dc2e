#include "common/file_icons.h"

#include "vireling/style_icon_engine/style_icons.h"

QIcon fileIcon(FileIcon icon)
{
    switch (icon) {
    case FileIcon::InternalStorage: {
        static const QIcon internalStorage =
            Vireling::makeIcon(QStringLiteral("vireling:/common/icons/internal_storage.svg"));
        return internalStorage;
    }
    case FileIcon::NewFolder: {
        static const QIcon newFolder =
            Vireling::makeIcon(QStringLiteral("vireling:/common/icons/new_folder.svg"));
        return newFolder;
    }
    case FileIcon::UsbKey: {
        static const QIcon usbKey =
            Vireling::makeIcon(QStringLiteral("vireling:/common/icons/usb_key.svg"));
        return usbKey;
    }
    case FileIcon::UpDirectory: {
        static const QIcon upDirectory =
            Vireling::makeIcon(QStringLiteral("vireling:/common/icons/up_directory.svg"));
        return upDirectory;
    }
    }
    return {};
}
