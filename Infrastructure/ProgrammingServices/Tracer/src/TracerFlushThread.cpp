#include "TracerFlushThread.h"

#include "Tracer.h"

void TracerFlushThread::letGo()
{
    if (Tracer::GetInstance() == nullptr)
        stop();
}

bool TracerFlushThread::writePending()
{
    Tracer* const tracer = Tracer::GetInstance();
    if (tracer != nullptr)
        tracer->writeInBackground();
    return tracer != nullptr;
}
