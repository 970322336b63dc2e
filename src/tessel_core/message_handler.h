#pragma once

#include <QString>
#include <QtGlobal>

namespace Tessel {

/** Where code that does not know the log, such as a library part, puts its messages. */
class MessageHandler
{
public:
    MessageHandler() = default;
    virtual ~MessageHandler();

    Q_DISABLE_COPY(MessageHandler)

    /** Takes one message. */
    virtual void message(const QString &text) = 0;

    /** Takes one message with a label that tells its context, such as a file name. */
    virtual void message(const QString &label, const QString &text) = 0;
};

/**
 * Feeds messages to the process-wide log, in the local 8-bit encoding. Any
 * thread may use it; the rules of log() hold.
 */
class LoggingMessageHandler : public MessageHandler
{
public:
    /** Logs at `logPriority`: category * 8 + severity. */
    explicit LoggingMessageHandler(quint32 logPriority);

    /**
     * Logs `text` as the format itself: a per-cent sign in it starts a
     * conversion, with no argument behind it. Never for texts from outside the
     * program; those go through the labelled form.
     */
    void message(const QString &text) override;

    /** Logs "[<label>] <text>", both as they are. */
    void message(const QString &label, const QString &text) override;

private:
    quint32 priority;
};

} // namespace Tessel
