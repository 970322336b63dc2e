#pragma once

#include <QString>
#include <QStringList>

/*
 * What the file panel makes of the names that operators type: each is that of one entry
 * of the folder shown, and leads nowhere else. Functions of their arguments; any thread.
 */

/** The name without separators, which would lead elsewhere, and without zeros, which end it. */
QString withoutSeparators(const QString &name);

/**
 * The path of the entry of that name in `folder`, which is not looked at. Empty when
 * there is no name, and for the names of the folder itself and of the one above it.
 */
QString pathOfName(const QString &folder, const QString &name);

/**
 * The path as it is if it ends in an extension of the filters ("*.cdp"), else with the
 * first of them. Upper and lower case are different extensions.
 */
QString withExtension(const QString &path, const QStringList &filters);
