#pragma once

#include <QIcon>

class QStandardItemModel;

namespace Vireling {

class PageWidget;

/*
 * What several pages show: things a crash reporter deals with.
 */

QIcon storageIcon();
QIcon usbKeyIcon();
QIcon newFolderIcon();
QIcon parentFolderIcon();

/** A line of text as users would read it. */
constexpr char sampleSentence[] = "The report is saved to the USB key.";

/** Directories and the files in them, in columns "Name", "Size" and "Saved". Owned by the page. */
QStandardItemModel *makeFileTree(PageWidget *page);

/** The same three columns without children. Owned by the page. */
QStandardItemModel *makeFileTable(PageWidget *page);

} // namespace Vireling
