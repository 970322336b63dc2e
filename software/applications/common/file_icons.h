#pragma once

#include <QIcon>

/** The icons of the file panel. */
enum class FileIcon
{
    InternalStorage = 0,
    NewFolder = 1,
    UsbKey = 2,
    UpDirectory = 3,
};

/**
 * One icon a value, built on first request and kept for the life of the process; a value
 * that is no icon gives a null one. GUI thread, not before the application exists.
 */
QIcon fileIcon(FileIcon icon);
