#pragma once

#include <string>
#include <vector>

/// What pkexec hands on of the caller's environment. A value that it finds suspicious makes it
/// refuse, after the user was asked for a password.
class ElevatedEnvironment {
public:
    /// Whether pkexec takes the value. A cookie file has to be named by an absolute path, too: the
    /// elevated program has another current folder.
    static bool mayHold(const std::string& name, const std::string& value);

    /// The variables of this process that the window can do without, locale and terminal, and that
    /// pkexec would refuse.
    static std::vector<std::string> dispensable();
};
