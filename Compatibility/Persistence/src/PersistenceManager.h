#pragma once

#include "StringPersistence.h"
#include "t_PersistenceMode.h"

#include <memory>
#include <string>

/// The text parameters of one domain, for one user or for all: passes each operation on to the
/// store that it owns.
class PersistenceManager {
public:
    PersistenceManager(const std::string& scope, const std::string& domain, t_PersistenceMode mode);
    explicit PersistenceManager(std::unique_ptr<StringPersistence> persistenceObject);
    ~PersistenceManager();

    PersistenceManager(const PersistenceManager&) = delete;
    PersistenceManager& operator=(const PersistenceManager&) = delete;

    bool readParam(const std::string& name, std::string& value);
    /// Requires a store and a name that is not empty; false where the signal of that violation is
    /// blocked.
    bool writeParam(const std::string& name, const std::string& value);
    void eraseAllParams();

private:
    static std::unique_ptr<StringPersistence> buildPersistence(
        const std::string& scope, const std::string& domain, t_PersistenceMode mode);

    std::unique_ptr<StringPersistence> m_persistenceObject;
};
