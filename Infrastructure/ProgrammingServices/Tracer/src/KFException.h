#pragma once

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
