#pragma once

#include "KFExceptionHandler.h"
#include "KFExceptionListener.h"

#include <cstdio>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// Prints the message of a crash report on the standard error, where a death test looks for it.
class CrashReport : public KFExceptionListener {
public:
    /// To be called inside the statement of the death test.
    static void printOnStandardError()
    {
        static CrashReport listener;
        KFExceptionHandler::GetInstance()->addListener(listener);
    }

    void onReport(const std::string& message) override
    {
        std::fprintf(stderr, "%s\n", message.c_str());
    }
};

/// The message of a report, whole. Where `<line>` is expected at its end any number will do: that
/// of a check follows the source.
MATCHER_P(IsCrashReport, expected, "")
{
    const std::string anyLine = "<line>";
    const std::string wanted = expected;
    std::string report = arg;
    if (wanted.ends_with(anyLine)) {
        const std::size_t digits = report.find_last_not_of("0123456789", report.size() - 2) + 1;
        if (digits == report.size() - 1)
            return false;
        report.replace(digits, report.size() - 1 - digits, anyLine);
    }
    return report == wanted + "\n";
}

/// Expects the statement to end the process with status 0 and this report's message:
/// EXPECT_CRASH_REPORT(get(""), "REQUIRE VIOLATION : !key.empty() - In File : A/B - At Line : 12")
#define EXPECT_CRASH_REPORT(statement, message)                                                    \
    EXPECT_EXIT(                                                                                   \
        {                                                                                          \
            CrashReport::printOnStandardError();                                                   \
            statement;                                                                             \
        },                                                                                         \
        testing::ExitedWithCode(0), IsCrashReport(std::string(message)))
