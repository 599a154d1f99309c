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
    /// The nested calls are those of the operation that `outer` marks, which must outlive it; for
    /// null none is marked.
    explicit NestedCalls(const CallMarker* outer) : m_outer(outer) {}

    void enter(const void* object);
    /// Ends the innermost nested call.
    void leave();

private:
    static constexpr std::size_t DEEPEST_MARKED = 256;

    const CallMarker* m_outer;
    std::size_t m_depth = 0;
    // The innermost call first, so that the calls still open end in the right order.
    std::forward_list<CallMarker> m_markers;
};
