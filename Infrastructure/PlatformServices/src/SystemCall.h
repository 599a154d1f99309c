#pragma once

#include <cerrno>
#include <system_error>

/// Hands on the result of a system call. A failed call (-1) is thrown as std::system_error, whose
/// text is the step and the system's reason: "writing the file: No space left on device".
template<typename Result>
Result checked(Result result, const char* step)
{
    if (result == -1)
        throw std::system_error(errno, std::generic_category(), step);
    return result;
}
