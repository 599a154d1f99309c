#pragma once

#include "TemporaryFolder.h"

#include <map>
#include <string>
#include <vector>

/// The start-up probe, installed under the tool's name in a fresh folder with the files that belong
/// beside it, and run in an environment of its own. The log and the trace go to the console, as far
/// as the files beside it say so.
class InstalledProbe {
public:
    InstalledProbe();

    struct Outcome {
        /// -1 when a signal ended it.
        int status;
        std::string output;
        std::string errors;
    };

    /// Runs it by its absolute path, or by what `name` says.
    Outcome run(const std::vector<std::string>& arguments = {}, const std::string& name = {}) const;

    /// Sets a variable of the environment, which holds nothing of this process's but the
    /// sanitizers' options.
    void setVariable(const std::string& name, const std::string& value)
    {
        m_environment[name] = value;
    }

    /// Files beside the executable.
    const TemporaryFolder& folder() const { return m_folder; }
    /// The user's home, where the log folder comes to stand.
    const TemporaryFolder& home() const { return m_home; }
    std::string logFolder() const { return m_home.file("Pelora/{CODE}/Logs"); }

private:
    std::string withReadableSuppressions(const std::string& options) const;

    TemporaryFolder m_folder;
    TemporaryFolder m_home;
    std::map<std::string, std::string> m_environment;
};
