#pragma once

/// Runs the window in a session that is made ready for it: no bus is started for its sake, who
/// reads a pipe as standard error neither waits for the window's end nor brings it about, and a
/// display that cannot be used is told in plain words, not by a crash report.
class ConfigurationSession {
public:
    /// The arguments are those of main. Returns the window's result; ends the process with status 1
    /// where no window can appear.
    static int run(int& argc, char** argv);
};
