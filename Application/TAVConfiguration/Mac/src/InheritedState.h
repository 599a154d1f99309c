#pragma once

/// What a process is handed by its caller behind the arguments and the environment, and what no
/// authorization service clears.
class InheritedState {
public:
    /// Takes back the caller's signal mask, behind which a violation, raised as a signal, would not
    /// end the process; and opens /dev/null for each standard stream that is closed, so that no
    /// file that is opened later takes its number and gets what is written there. The caller's
    /// children that came along are noted (InheritedChildren).
    ///
    /// Main thread only, before anything is opened or started.
    static void takeBack();
};
