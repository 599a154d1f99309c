#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Reads and replaces regular files so that nothing is lost: what is not a regular file (a folder,
/// a FIFO, a device, a symbolic link) cannot be opened, and never blocks.
///
/// No operation throws for a file's sake; any thread may call them.
class SafeFile {
public:
    /// Whether the replaced version stays beside the file, with ".bak" behind its name.
    enum class Backup { none, keep };

    /// Whether a symbolic link is refused or leads to the file that it names.
    enum class Links { refuse, follow };

    /// The whole content; nothing when the file cannot be opened or read, or holds more than
    /// `longest` bytes.
    static std::optional<std::string> read(
        const std::string& path, Links links = Links::refuse,
        std::size_t longest = std::string::npos);

    /// Reads the content that a change starts from, which is empty when the file is missing. Never
    /// a mix: what another process writes in place is not read.
    ///
    /// Returns an empty string, or why a file that is there was not read, with `content` unchanged.
    static std::string readForChange(const std::string& path, std::string& content);

    /// Gives the file a new content: a reader sees the old bytes or the new, never a mix. Written
    /// to a temporary file in the same folder, synced, renamed over the old one, the folder synced;
    /// a new file gets mode 0644, a replaced one keeps its owner and its mode, of which the set-id
    /// and sticky bits are dropped.
    ///
    /// Where the folder refuses new files, or the file refuses a new owner, but the file can be
    /// written, it is written in place: read() may then see a mix, no backup is made, and of two
    /// processes that write at once one fails.
    ///
    /// Returns an empty string, or why it failed (the step and the system's reason), with the old
    /// content left in place unless the step is that of putting it back.
    static std::string replace(const std::string& path, std::string_view content, Backup backup);
};
