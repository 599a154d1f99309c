#pragma once

#include <sys/stat.h>

/// Gives the process a file mode mask for one scope, then puts the former one back, whatever it has
/// become meanwhile.
class FileModeMask {
public:
    explicit FileModeMask(mode_t mask) : m_former(umask(mask)) {}
    ~FileModeMask() { umask(m_former); }

    FileModeMask(const FileModeMask&) = delete;
    FileModeMask& operator=(const FileModeMask&) = delete;

    /// The mask as it is now.
    static mode_t current()
    {
        const mode_t mask = umask(0);
        umask(mask);
        return mask;
    }

private:
    mode_t m_former;
};
