#pragma once

#include "common/file_list_view.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>

namespace TestSupport {

/** What is on the key, in the sandbox. */
inline const QString keyFolder = QStringLiteral("/usbkey");

/** As long as the kernel allows, in bytes. */
inline QString longestName(const QString &start, const QString &extension)
{
    return start.leftJustified(255 - extension.size(), QLatin1Char('w')) + extension;
}

inline void makeFile(const QString &folder, const QString &name)
{
    QFile file(QDir(folder).filePath(name));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("no file %s", qPrintable(file.fileName()));
}

/** A few folders, one with folders below, and a few reports. */
inline void fillOrdinarily(const QString &folder)
{
    QDir().mkpath(folder + QStringLiteral("/Sound & Light/2026/November"));
    QDir().mkpath(folder + QStringLiteral("/Venues"));
    QDir().mkpath(folder + QStringLiteral("/Festival"));
    for (int number = 0; number < 4; ++number)
        makeFile(folder, QStringLiteral("Crash Report %1.cdp").arg(number));
}

/** Whether the picture is all of one colour. */
inline bool isPlain(const QImage &picture)
{
    QImage plain(picture.size(), picture.format());
    plain.setDevicePixelRatio(picture.devicePixelRatio());
    plain.fill(picture.pixelColor(0, 0));
    return picture == plain;
}

/** The controls of the file panel in a dialog, as an operator finds them. */
struct FileDialogParts
{
    explicit FileDialogParts(const QWidget &dialog)
        : location(dialog.findChild<QComboBox *>(QStringLiteral("locationComboBox")))
        , internalStorage(dialog.findChild<QToolButton *>(QStringLiteral("localDiskButton")))
        , usbKey(dialog.findChild<QToolButton *>(QStringLiteral("usbDiskButton")))
        , list(dialog.findChild<FileListView *>(QStringLiteral("listView")))
        , name(dialog.findChild<QLineEdit *>(QStringLiteral("configurationNameLineEdit")))
        , ok(dialog.findChild<QPushButton *>(QStringLiteral("okButton")))
        , cancel(dialog.findChild<QPushButton *>(QStringLiteral("cancelButton")))
    {}

    /** The row of that name in the folder shown; invalid while the list lacks it. */
    QModelIndex row(const QString &text) const
    {
        const QModelIndex root = list->rootIndex();
        for (int number = 0; root.isValid() && number < list->model()->rowCount(root); ++number) {
            const QModelIndex index = list->model()->index(number, 0, root);
            if (index.data().toString() == text)
                return index;
        }
        return {};
    }

    QComboBox *location;
    QToolButton *internalStorage;
    QToolButton *usbKey;
    FileListView *list;
    QLineEdit *name;
    QPushButton *ok;
    QPushButton *cancel;
};

} // namespace TestSupport
