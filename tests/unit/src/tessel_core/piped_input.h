#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <cstddef>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

/** Another standard input while it lives: the read end of a pipe. */
class PipedInput
{
public:
    PipedInput()
        : saved(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
    {
        int ends[2] = {-1, -1};
        if (pipe2(ends, O_CLOEXEC) != 0)
            qFatal("no pipe");
        dup2(ends[0], STDIN_FILENO);
        close(ends[0]);
        writeEnd = ends[1];
    }
    ~PipedInput()
    {
        dup2(saved, STDIN_FILENO);
        close(saved);
        close(writeEnd);
    }
    PipedInput(const PipedInput &) = delete;
    PipedInput &operator=(const PipedInput &) = delete;

    bool type(const QByteArray &text) const
    {
        return write(writeEnd, text.constData(), static_cast<std::size_t>(text.size())) ==
               text.size();
    }
    static int unreadBytes()
    {
        int unread = -1;
        ioctl(STDIN_FILENO, FIONREAD, &unread);
        return unread;
    }

private:
    int saved;
    int writeEnd = -1;
};
