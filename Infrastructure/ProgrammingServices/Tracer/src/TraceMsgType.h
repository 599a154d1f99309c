#pragma once

#include <cstdint>

/// The type of a trace message: one bit each, so that a set of types is a mask. The bits are those
/// of LoggerMsgType.
enum class TraceMsgType : std::uint32_t {
    D = 1,  ///< debug
    E = 2,  ///< error
    W = 4,  ///< warning
    L0 = 8, ///< free levels 0 to 5
    L1 = 16,
    L2 = 32,
    L3 = 64,
    L4 = 128,
    L5 = 256,
};
