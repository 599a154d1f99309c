#pragma once

#include <string>

/// The signal numbers of the program's reports, 1 to 30, and what they are on this host.
class ProgramSignals {
public:
    static constexpr int FIRST = 1;
    static constexpr int LAST = 30;
    static constexpr int WINDOW_SIZE_CHANGE = 28;
    static constexpr int CONTRACT_VIOLATION = 30;

    /// The host's number; -1, which no host signal has, for a number that is not in the set.
    static int toHost(int signal);
    /// The program's number; 0 for a host signal that is not in the set.
    static int fromHost(int hostSignal);
    /// The name in reports; "UNKNOWN SIGNAL (<number>)" for a number without one.
    static std::string name(int signal);
};
