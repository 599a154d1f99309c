#pragma once

#include "CallMarker.h"

#include <cstddef>
#include <forward_list>

/// The call markers of the operations on inner dictionaries, which a loop does in place of calls.
///
/// A tree may be nested deeper than the call stack reaches, so no operation calls itself for a
/// child; its trace shows the child's call all the same. A line is indented once for each open
/// call, so only the outermost ones are marked: n of them write n * n characters. Nothing is
/// allocated while the outer call is not recorded.
class NestedCalls {
public:
    /// Both must outlive it; `signature` is what each nested call shows.
    NestedCalls(const CallMarker& outer, const char* signature);

    void enter(const void* object);
    /// Ends the innermost nested call; the outer one is left to its own marker.
    void leave();

    /// The innermost call, in which messages are written.
    const CallMarker& marker() const;

private:
    static constexpr std::size_t s_deepestMarked = 256;

    const CallMarker& m_outer;
    const char* m_signature;
    std::size_t m_depth = 0;
    // The innermost call first, so that the calls still open end in the right order.
    std::forward_list<CallMarker> m_markers;
};
