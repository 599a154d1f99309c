#include <cstdio>
#include <cstdlib>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

// A contract violation or a signal ends the process with status 0, which would pass for a test that
// has succeeded. Part of every test program: an end inside a test counts as a failure, and no test
// depends on the file mode mask of whoever starts it.
namespace {

pid_t processOfTheTests = 0;

class TestProgram : public testing::EmptyTestEventListener {
public:
    void OnTestProgramStart(const testing::UnitTest& /*program*/) override
    {
        processOfTheTests = getpid();
        umask(022); // the modes of files and folders that tests expect are those of this mask
        std::atexit(failInsideATest);
    }
    void OnTestProgramEnd(const testing::UnitTest& /*program*/) override { processOfTheTests = 0; }

private:
    static void failInsideATest()
    {
        if (processOfTheTests != getpid() || testing::internal::InDeathTestChild())
            return;
        std::puts("[  FAILED  ] The process ended inside a test.");
        std::fflush(nullptr);
        _exit(EXIT_FAILURE);
    }
};

const bool added = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new TestProgram);
    return true;
}();

} // namespace
