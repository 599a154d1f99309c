#pragma once

#include <string>

/// Paths of the executable and of the data folders; creation, copying and deletion of files and
/// folders.
///
/// Paths use "/". No operation throws: a failure is false or an empty string.
class FileSystemManagement {
public:
    static char getFolderSeparator() { return '/'; }
};
