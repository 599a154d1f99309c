#include "ProgramSignals.h"

#include <csignal>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace {

struct Row {
    int signal;
    int host;
    std::string name;

    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.signal; }
};

class ProgramSignalsTable : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(ProgramSignalsTable, TranslatesBothWaysAndNames)
{
    EXPECT_EQ(ProgramSignals::toHost(GetParam().signal), GetParam().host);
    EXPECT_EQ(ProgramSignals::fromHost(GetParam().host), GetParam().signal);
    EXPECT_EQ(ProgramSignals::name(GetParam().signal), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ProgramSignalsTable,
    testing::Values(
        Row{1, SIGHUP, "SIGNAL_HANG_UP"}, Row{2, SIGINT, "SIGNAL_INTERRUPT"},
        Row{3, SIGQUIT, "SIGNAL_QUIT"}, Row{4, SIGILL, "SIGNAL_ILLEGAL_INSTRUCTION"},
        Row{5, SIGTRAP, "SIGNAL_TRACE_TRAP"}, Row{6, SIGABRT, "SIGNAL_ABORT"},
        Row{7, SIGSTKFLT, "UNKNOWN SIGNAL (7)"}, Row{8, SIGFPE, "SIGNAL_FLT"},
        Row{9, SIGKILL, "SIGNAL_KILL"}, Row{10, SIGBUS, "SIGNAL_BUS_ERROR"},
        Row{11, SIGSEGV, "SIGNAL_SEGMENTATION_FAULT"},
        Row{12, SIGSYS, "SIGNAL_BAD_ARGUMENT_SYSTEM_CALL"},
        Row{13, SIGPIPE, "SIGNAL_WRITE_PIPE_WITH_NO_READER"},
        Row{14, SIGALRM, "SIGNAL_ALARM_CLOCK"}, Row{15, SIGTERM, "SIGNAL_SOTWARE_TERMINATION"},
        Row{16, SIGURG, "SIGNAL_URG_ON_IO_CHANNEL"}, Row{17, SIGSTOP, "SIGNAL_STOP"},
        Row{18, SIGTSTP, "UNKNOWN SIGNAL (18)"}, Row{19, SIGCONT, "SIGNAL_CONTINUE"},
        Row{20, SIGCHLD, "SIGNAL_SIGCHLD"}, Row{21, SIGTTIN, "SIGNAL_SIGTTIN"},
        Row{22, SIGTTOU, "SIGNAL_SIGTTOU"}, Row{23, SIGIO, "UNKNOWN SIGNAL (23)"},
        Row{24, SIGXCPU, "UNKNOWN SIGNAL (24)"}, Row{25, SIGXFSZ, "UNKNOWN SIGNAL (25)"},
        Row{26, SIGVTALRM, "UNKNOWN SIGNAL (26)"}, Row{27, SIGPROF, "UNKNOWN SIGNAL (27)"},
        Row{28, SIGWINCH, "SIGNAL_WINDOW_SIZE_CHANGE"}, Row{29, SIGPWR, "UNKNOWN SIGNAL (29)"},
        Row{30, SIGUSR1, "UNKNOWN SIGNAL (30)"}));

TEST(ProgramSignals, HaveNoHostSignalOutsideTheSet)
{
    for (const int signal : {-1, 0, 31, 1000})
        EXPECT_EQ(ProgramSignals::toHost(signal), -1) << signal;
}

TEST(ProgramSignals, HoldNoOtherHostSignal)
{
    for (const int host : {-1, 0, SIGUSR2, SIGRTMIN, SIGRTMAX})
        EXPECT_EQ(ProgramSignals::fromHost(host), 0) << host;
}

TEST(ProgramSignals, OutsideTheSetAreUnknown)
{
    EXPECT_EQ(ProgramSignals::name(0), "UNKNOWN SIGNAL (0)");
    EXPECT_EQ(ProgramSignals::name(-5), "UNKNOWN SIGNAL (-5)");
    EXPECT_EQ(ProgramSignals::name(31), "UNKNOWN SIGNAL (31)");
}
