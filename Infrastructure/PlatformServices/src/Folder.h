#pragma once

#include "FileDescriptor.h"

#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <fcntl.h>

/// An open folder, so that what is done in it afterwards stays in it whatever becomes of its path.
///
/// Nothing throws for a folder's sake: one that is not open tells so and has no names.
class Folder {
public:
    /// Opens `path`, taken relative to the open folder `parent` (AT_FDCWD: the current one). With
    /// O_NOFOLLOW among `flags` a symbolic link is no folder.
    Folder(int parent, const std::string& path, int flags = 0);

    bool isOpen() const { return m_descriptor.isOpen(); }
    void close() { const FileDescriptor closed = std::move(m_descriptor); }
    int descriptor() const { return m_descriptor.get(); }
    /// Why the folder could not be opened; no error when it is open.
    std::error_code error() const { return m_error; }

    /// The names of the entries but "." and "..", sorted; nothing when they cannot be read. Throws
    /// std::bad_alloc.
    std::optional<std::vector<std::string>> names() const;

private:
    FileDescriptor m_descriptor;
    std::error_code m_error;
};
