#include "Diagnostics.h"

#include "Logger.h"
#include "Tracer.h"

namespace {

void drainOne(LineOutput* output)
{
    if (output != nullptr)
        output->drain();
}

} // namespace

void Diagnostics::drain()
{
    drainOne(Tracer::GetInstance());
    drainOne(Logger::GetInstance());
}
