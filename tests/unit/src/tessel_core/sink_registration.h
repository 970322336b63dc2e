#pragma once

#include "tessel_core/log.h"

/** A pair of sink and context, for as long as it lives. */
class SinkRegistration
{
public:
    SinkRegistration(Tessel::LogSink registeredSink, void *registeredContext)
        : sink(registeredSink)
        , context(registeredContext)
    {
        Tessel::registerLogSink(sink, context);
    }
    ~SinkRegistration() { Tessel::unregisterLogSink(sink, context); }
    Q_DISABLE_COPY(SinkRegistration)

private:
    Tessel::LogSink sink;
    void *context;
};
