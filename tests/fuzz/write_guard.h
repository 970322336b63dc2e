#pragma once

#include <QByteArray>

/**
 * While one lives, a path outside `folder` that this process would make, open for
 * writing, remove or change ends it before that happens: an extraction that left its
 * folder would otherwise write on the machine of whoever tries. One at a time.
 */
class WriteGuard
{
public:
    /** Absolute, without a separator at its end. */
    explicit WriteGuard(const QByteArray &folder);
    ~WriteGuard();
    WriteGuard(const WriteGuard &) = delete;
    WriteGuard &operator=(const WriteGuard &) = delete;
};
