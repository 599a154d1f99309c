#pragma once

#include <new>

/// Does a step of the diagnostics, or leaves it where an allocation fails: a line or a name is
/// lost, and the program goes on as if it were neither traced nor logged. So markers, messages and
/// log lines may stand where nothing may be thrown.
template<typename Step>
void unlessMemoryRunsOut(const Step& step) noexcept
{
    try {
        step();
    } catch (const std::bad_alloc&) { // what the step has not done is lost
    }
}
