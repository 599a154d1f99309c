#pragma once

#include "Tracer.h"

#include <tuple>

/// Everything that a configuration file can set, to be compared with that of another tracer; the
/// filters by what they let through.
inline auto optionsOf(Tracer& tracer)
{
    return std::tuple(
        tracer.getTreeIndent(), tracer.getIndentHidden(), tracer.getPrintExit(),
        tracer.getPrintTime(), tracer.getPrintObjects(), tracer.isSynchronous(),
        tracer.getMaxFiles(), tracer.getMaxLinesPerFile(), tracer.getCurrentFileName(),
        tracer.isActive(), tracer.isThreadPermittedToPrint("Main"),
        tracer.isCallPermittedToPrint("Main"), tracer.isCallForbiddenToPrint("Main"),
        tracer.getMsgTypeMask());
}
