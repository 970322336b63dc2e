#pragma once

#include <QString>

/*
 * Whose make a block device is: the one thing asked of libudev, as a plain number. A
 * device of no known vendor has vendor 0.
 */

/**
 * The USB vendor of the block device of that name, a disk or a partition. 0 when it hangs
 * on no USB device, is unknown to the kernel or does not tell. Any thread.
 */
int usbVendorOf(const QString &deviceName);

/** The name of the disk a partition belongs to: the name without its digits. */
QString diskNameOf(const QString &deviceName);

/** The number in the text of an "idVendor" attribute, which is hexadecimal; else 0. */
int vendorNumber(const QString &idVendor);

/** Whether devices of that vendor are no place for an operator's files. */
bool isExcludedVendor(int vendor);
