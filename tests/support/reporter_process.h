#pragma once

#include <QString>

namespace TestSupport {

/**
 * Whether a process of that program, with `variable` (NAME=VALUE) in its
 * environment, sleeps in poll(2) on its main thread: it has done all it had to do
 * and waits for events. For programs in a sandbox too. Linux on x86-64.
 */
bool isWaitingForEvents(const QString &program, const QByteArray &variable);

} // namespace TestSupport
