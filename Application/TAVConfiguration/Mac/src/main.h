#pragma once

#include <cstdio>
#include <memory>
#include <string>

class AuthorizationServices;

/// Runs the window and its event loop; takes its own options out of the arguments, returns the exit
/// status.
using ApplicationMain = int (*)(int& argc, char** argv);

/// Makes the operations that the start-up gets its rights by.
using AuthorizationServicesMaker = std::unique_ptr<AuthorizationServices> (*)();

/// The start-up, what the executables call first and last: sets up the diagnostics, loads the
/// texts, then either relaunches the program with administrator rights or, when it is the
/// relaunched instance and holds them, runs the window.
///
/// The authorization services are made once the diagnostics are there, and end before this returns,
/// so that they are traced and counted as all else.
///
/// Main thread only, once in a process. Returns the exit status: the window's, 0 when no window was
/// shown. A program that cannot start at all ends in the crash report.
int tavConfigurationMain(
    int argc, char** argv, AuthorizationServicesMaker makeServices, ApplicationMain runApplication);

/// Reads the identity card, makes the log folder and publishes the tracer and the logger, each
/// configured by its file beside the executable ("tracer<suffix>.cfg", "logger<suffix>.cfg"). An
/// instance that is published already is left as it is.
void initTracesAndLogs(const std::string& suffix);

/// Traces what a child process prints, line by line up to its end, then waits for any child and
/// returns its process id. The pipe stays open.
int WaitForChildProcess(std::FILE* pipe, const std::string& processName);
