#include "TracerFlushThread.h"

#include "Tracer.h"

void TracerFlushThread::run()
{
    while (isRunning()) {
        sleep(1);
        Tracer* const tracer = Tracer::GetInstance();
        if (tracer == nullptr)
            return;
        tracer->writeInBackground();
    }
}
