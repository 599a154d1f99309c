#pragma once

/// Gets the process's environment ready for the window system. An elevated process, and one that
/// is started outside a desktop, has no session bus: the bus library would start one as a child of
/// this process, whose end the crash handler would take for a crash.
class DesktopSession {
public:
    /// What the process has for a session bus.
    enum class Bus {
        none,
        session,
        accessibility, ///< the desktop's accessibility bus stands in, so that screen readers work
    };

    /// To be called before the application object exists, on the main thread.
    static Bus prepare();
};
