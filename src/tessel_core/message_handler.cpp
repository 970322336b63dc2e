#include "tessel_core/message_handler.h"

#include "tessel_core/log.h"

namespace Tessel {

MessageHandler::~MessageHandler() = default;

LoggingMessageHandler::LoggingMessageHandler(quint32 logPriority)
    : priority(logPriority)
{}

void LoggingMessageHandler::message(const QString &text)
{
    // The text is the format on purpose, as in logString().
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    log(priority, text.toLocal8Bit().constData());
#pragma GCC diagnostic pop
}

void LoggingMessageHandler::message(const QString &label, const QString &text)
{
    log(priority, "[%s] %s", label.toLocal8Bit().constData(), text.toLocal8Bit().constData());
}

} // namespace Tessel
