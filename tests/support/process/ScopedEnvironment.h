#pragma once

#include <cstdlib>
#include <optional>
#include <string>

/// Gives an environment variable a value, or takes it away (std::nullopt), for one scope, then puts
/// the former one back.
class ScopedEnvironment {
public:
    ScopedEnvironment(const std::string& name, const std::optional<std::string>& value)
        : m_name(name)
    {
        if (const char* former = std::getenv(name.c_str()))
            m_former = former;
        set(value);
    }
    ~ScopedEnvironment() { set(m_former); }

    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void set(const std::optional<std::string>& value) const
    {
        if (value)
            setenv(m_name.c_str(), value->c_str(), 1);
        else
            unsetenv(m_name.c_str());
    }

    std::string m_name;
    std::optional<std::string> m_former;
};
