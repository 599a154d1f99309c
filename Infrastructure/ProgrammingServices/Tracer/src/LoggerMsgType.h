#pragma once

#include <cstdint>

/// The level of a log line: one bit each, so that a set of levels is a mask. The bits are those of
/// TraceMsgType.
enum class LoggerMsgType : std::uint32_t {
    DEBUG = 1,
    ERROR = 2,
    WARNING = 4,
    LEVEL_0 = 8,
    LEVEL_1 = 16,
    LEVEL_2 = 32,
    LEVEL_3 = 64,
    LEVEL_4 = 128,
    LEVEL_5 = 256,
};
