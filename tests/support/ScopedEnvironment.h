#pragma once

#include <cstdlib>
#include <optional>
#include <string>

/// Gives an environment variable a value for one scope, then puts the former one back.
class ScopedEnvironment {
public:
    ScopedEnvironment(const std::string& name, const std::string& value) : m_name(name)
    {
        if (const char* former = std::getenv(name.c_str()))
            m_former = former;
        setenv(name.c_str(), value.c_str(), 1);
    }
    ~ScopedEnvironment()
    {
        if (m_former)
            setenv(m_name.c_str(), m_former->c_str(), 1);
        else
            unsetenv(m_name.c_str());
    }

    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string m_name;
    std::optional<std::string> m_former;
};
