#pragma once

/// Shows the configuration window and runs the application loop until the window is done with:
/// returns the loop's result. The localizer must have its texts by then. The arguments are those of
/// main; the toolkit takes its own out of them. An exception of the program's own in the set-up or
/// in the loop ends the process with a report.
int runConfigurationApplication(int& argc, char** argv);
