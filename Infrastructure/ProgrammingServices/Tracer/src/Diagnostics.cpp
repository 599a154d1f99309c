#include "Diagnostics.h"

#include "Console.h"
#include "Logger.h"
#include "Tracer.h"

#include <atomic>
#include <cstdlib>

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

void Diagnostics::drainAtExit()
{
    static std::atomic<bool> s_registered = false;
    if (!s_registered.exchange(true))
        std::atexit(&Diagnostics::drain);
}

void Diagnostics::endProcess(const char* message)
{
    Console::writeLine(message);
    drainAtExit();
    std::exit(1);
}
