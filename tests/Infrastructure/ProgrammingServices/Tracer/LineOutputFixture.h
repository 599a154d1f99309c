#pragma once

#include "Diagnostics.h"
#include "FlushThread.h"
#include "LineOutput.h"
#include "TemporaryFolder.h"

#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

/// A facility that is nothing but its output; without a thread, so it is initialized only when
/// synchronous.
class TestOutput : public LineOutput {
public:
    TestOutput() : LineOutput("Facility") {}

    using LineOutput::finish;
    using LineOutput::writeAllPending;

    KFMutex& mutex() { return m_mutex; }

    /// Whether another thread can have the mutex.
    bool isMutexFree()
    {
        bool isFree = false;
        std::thread([this, &isFree] {
            isFree = m_mutex.tryacquire();
            if (isFree)
                m_mutex.release();
        }).join();
        return isFree;
    }

private:
    std::shared_ptr<FlushThread> makeFlushThread() override { return nullptr; }
    [[noreturn]] void endWithoutFileName() override
    {
        Diagnostics::endProcess("please name a file");
    }
};

class LineOutputTest : public testing::Test {
protected:
    // A file by mistake named "console" would be made in the test's own folder.
    void SetUp() override { std::filesystem::current_path(m_folder.path()); }
    void TearDown() override { std::filesystem::current_path(m_formerPath); }

    void print(const std::string& lines)
    {
        std::size_t begin = 0;
        for (std::size_t end = lines.find('\n'); end != std::string::npos;
             end = lines.find('\n', begin)) {
            m_output.PrintString(lines.substr(begin, end + 1 - begin));
            begin = end + 1;
        }
    }
    void printAndWrite(const std::string& lines)
    {
        print(lines);
        m_output.WriteOnFile();
    }
    std::string cannotOpen(const char* name) const
    {
        return "Facility : can't open " + m_folder.file(name) + "\n";
    }

    std::filesystem::path m_formerPath = std::filesystem::current_path();
    TemporaryFolder m_folder;
    TestOutput m_output;
};

/// A ring named "app" in the folder of the test.
class LineOutputRing : public LineOutputTest {
protected:
    void useRing() { m_output.SetFileName(m_folder.file("app")); }
    /// All of them of one moment, so that a test at midnight finds them in order too.
    void addOldFile(const char* name, const char* content) const
    {
        const std::timespec times[2] = {{1000, 0}, {1000, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, m_folder.write(name, content).c_str(), times, 0), 0);
    }
    void makeFolderInPlaceOf(const char* name) const
    {
        ASSERT_EQ(mkdir(m_folder.file(name).c_str(), 0700), 0);
    }
};
