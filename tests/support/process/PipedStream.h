#pragma once

#include <array>
#include <cstddef>
#include <string>

#include <fcntl.h>
#include <unistd.h>

/// A pipe in the place of a standard stream; the stream is put back at the end of the scope.
class PipedStream {
public:
    explicit PipedStream(int stream) : m_stream(stream), m_saved(dup(stream))
    {
        if (pipe(m_ends.data()) == 0)
            dup2(m_ends[1], stream);
        close(m_ends[1]);
    }
    ~PipedStream()
    {
        dup2(m_saved, m_stream);
        close(m_saved);
        close(m_ends[0]);
    }

    PipedStream(const PipedStream&) = delete;
    PipedStream& operator=(const PipedStream&) = delete;

    /// From here on nobody reads.
    void closeReader()
    {
        close(m_ends[0]);
        m_ends[0] = -1;
    }

    /// All that the pipe holds; waits while it is empty.
    std::string read() const
    {
        const int capacity = fcntl(m_ends[0], F_GETPIPE_SZ);
        std::string text(static_cast<std::size_t>(capacity), '\0');
        const ssize_t count = ::read(m_ends[0], text.data(), text.size());
        text.resize(static_cast<std::size_t>(count));
        return text;
    }

private:
    int m_stream;
    int m_saved;
    std::array<int, 2> m_ends{};
};
