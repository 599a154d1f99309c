#pragma once

#include <string>

/// Whether a window of root can appear in the session of this process: what is handed on to an
/// elevated program is the X display and its cookie file, and nothing of a Wayland session.
class ElevatedDisplay {
public:
    /// Why no window can appear, in plain words; empty when one can.
    static std::string obstacle();
};
