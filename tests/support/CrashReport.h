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

/// Expects the statement to end the process with status 0 and this report's message, whole:
/// EXPECT_CRASH_REPORT(get(""), "REQUIRE VIOLATION : !key.empty() - In File : A/B - At Line : 12")
#define EXPECT_CRASH_REPORT(statement, message)                                                    \
    EXPECT_EXIT(                                                                                   \
        {                                                                                          \
            CrashReport::printOnStandardError();                                                   \
            statement;                                                                             \
        },                                                                                         \
        testing::ExitedWithCode(0), testing::Eq(std::string(message) + "\n"))
