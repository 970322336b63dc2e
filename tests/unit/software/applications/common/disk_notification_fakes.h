#pragma once

#include "tessel_core/disk_notification.h"

#include <QSet>
#include <QStringList>

namespace TestSupport {

/*
 * The disk notification as a plain list: a program that has disk_notification_fakes.cpp
 * among its sources holds none of the real service, which the linker then has no reason
 * to fetch. One thread.
 */
struct DiskNotificationFakes
{
    /** "initialise FOLDER", "add", "present NAME", "remove", "shutdown", in order. */
    QStringList calls;
    QSet<QString> present;
    /** As registered; null when nobody listens. */
    Tessel::DiskNotification::Listener listener = nullptr;
    void *context = nullptr;

    static DiskNotificationFakes &instance();
};

} // namespace TestSupport
