#pragma once

#include <string>

/// A store of named texts.
class StringPersistence {
public:
    StringPersistence();
    virtual ~StringPersistence();

    StringPersistence(const StringPersistence&) = delete;
    StringPersistence& operator=(const StringPersistence&) = delete;

    /// Adds or replaces the parameter; false when it could not be stored.
    virtual bool writeParam(const std::string& name, const std::string& value) = 0;
    /// False, with `value` unchanged, when there is no such parameter.
    virtual bool readParam(const std::string& name, std::string& value) = 0;
    virtual void eraseAllParams() = 0;
};
