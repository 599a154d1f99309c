#pragma once

#include "CallMarker.h"

#include <algorithm>
#include <array>
#include <exception>
#include <string>

/// The root of the program's exceptions: what went wrong, and the source unit and line that say so.
///
/// Each subclass lives with its thrower and passes a fixed description. The recorded unit and line
/// are part of the program's reports, not the compiler's own file and line.
class KFException : public std::exception {
public:
    KFException(std::string description, std::string fileName, int line);

    /// The description alone.
    const char* what() const noexcept override { return m_description.c_str(); }
    const std::string& getFileName() const noexcept { return m_fileName; }
    int getLine() const noexcept { return m_line; }

    /// The whole report in one line; subclasses have wordings of their own.
    virtual std::string toString() const;

protected:
    /// The report in the wording of one class: how it calls itself, and what it says of the line.
    std::string report(const char* kind, const char* beforeLine) const;

private:
    std::string m_description;
    std::string m_fileName;
    int m_line;
};

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
