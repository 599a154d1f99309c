#pragma once

#include <cstdio>
#include <memory>
#include <string>

/// The numbered text files base_0.txt, base_1.txt, ... that a trace or a log is written to in turn.
///
/// Only regular files are opened: a folder, a FIFO, a device or a symbolic link counts as a file
/// that cannot be opened, and never blocks. So does a file with a second name that somebody else
/// can have given it; in a folder of the process's own user, which others may not change, his own
/// file may have one. Nothing is kept between the calls.
class RingFiles {
public:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    using File = std::unique_ptr<std::FILE, Closer>;

    enum class Mode {
        append, ///< as "a"
        empty,  ///< as "w+"
    };

    static std::string name(const std::string& base, long index);

    /// The index of the file written last: the end of the run of files, from index 0 to maxFiles,
    /// each of which is no older than the one before; -1 when there is no file 0.
    ///
    /// Kept: date and time of day are compared separately, so a file written on a later day at an
    /// earlier hour counts as older.
    static long findLastUsed(const std::string& base, long maxFiles);

    /// Opens the file, created with mode 0644 less the file mode mask when it is not there; null on
    /// failure.
    static File open(const std::string& path, Mode mode);

    /// The lines of the file, a last one without an end of line included; 0 when it cannot be read.
    static long countLines(const std::string& path);
};
