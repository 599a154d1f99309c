#pragma once

#include "CallMarker.h"
#include "KFException.h"

#include <algorithm>
#include <array>
#include <string>

/// The name of an exception class as an argument of the template below.
struct KFExceptionName {
    constexpr KFExceptionName(const char* name, const char* ending = "")
    {
        char* end = text.data();
        for (const char* const part : {name, ending})
            end = std::copy_n(part, std::char_traits<char>::length(part), end);
    }

    std::array<char, 64> text{};
};

/// An exception class that differs from its base in the name under which it is marked and counted:
///
///     class KFSomeException : public KFNamedException<"KFSomeException", KFException> {
///         using KFNamedException::KFNamedException;
///     };
template<KFExceptionName Name, typename Base>
class KFNamedException : public Base {
public:
    KFNamedException(const std::string& description, const std::string& fileName, int line)
        : Base(description, fileName, line)
    {
        CallMarker marker(Name.text.data(), CONSTRUCTOR.text.data(), true, this);
    }
    KFNamedException(const KFNamedException& other) : Base(other)
    {
        CallMarker marker(Name.text.data(), CONSTRUCTOR.text.data(), true, this);
    }
    KFNamedException& operator=(const KFNamedException&) = delete;
    ~KFNamedException() override
    {
        CallMarker marker(Name.text.data(), DESTRUCTOR.text.data(), false, this);
    }

private:
    static constexpr KFExceptionName CONSTRUCTOR{Name.text.data(), "::constructor"};
    static constexpr KFExceptionName DESTRUCTOR{Name.text.data(), "::destructor"};
};
