#pragma once

#include "LoggerMsgType.h"

#include <sstream>

/// Builds one log line by stream insertions, and logs it at the end of its scope:
///
///     LogStream(LoggerMsgType::LEVEL_1) << "loaded " << count << " networks";
///
/// Kept: the built text is the message's format itself. A "%" in it would be read as a conversion,
/// so stream no text from outside, and "%%" for a percent sign.
class LogStream : public std::ostringstream {
public:
    explicit LogStream(LoggerMsgType type);
    ~LogStream() override;

    LogStream(const LogStream&) = delete;
    LogStream& operator=(const LogStream&) = delete;

private:
    LoggerMsgType m_type;
};
