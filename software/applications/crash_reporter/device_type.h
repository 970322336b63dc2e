#pragma once

#include <QString>
#include <QtGlobal>

/**
 * The model name of a device type code, as the shared block holds it. Model
 * names are never translated; any code without a model gives "Unknown" in the
 * operator's language.
 */
QString deviceTypeName(quint8 code);

/*
 * The process-wide current device type and what the product family looks up by
 * it. The crash reporter itself neither sets nor reads it.
 */

/** Sets the current type. Only the first call counts. GUI thread. */
void setCurrentDeviceType(quint8 code);

/** The current type's code, -1 before it was set. */
int currentDeviceType();

/** deviceTypeName() of the current type. */
QString currentDeviceTypeName();

/** Code 3 gives 4, code 6 gives 2, any other 1. */
int deviceLookupA(int code = currentDeviceType());

/** Code 6 gives 4000, any other 2000. */
int deviceLookupB(int code = currentDeviceType());

/** Code 5 gives 100000, any other 520000. */
int deviceLookupC(int code = currentDeviceType());

/** Codes 2 to 7 give 256, 64, 128, 128, 1024 and 256, any other 0. */
int deviceLookupD(int code = currentDeviceType());
