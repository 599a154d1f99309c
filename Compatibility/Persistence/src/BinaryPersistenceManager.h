#pragma once

#include "BinaryPersistence.h"

#include <memory>
#include <string>

/// The binary parameters of one domain, for one user or for all: passes each operation on to the
/// store that it owns.
class BinaryPersistenceManager {
public:
    BinaryPersistenceManager(
        const std::string& scope, const std::string& domain, t_PersistenceMode mode);
    explicit BinaryPersistenceManager(std::unique_ptr<BinaryPersistence> persistenceObject);
    ~BinaryPersistenceManager();

    BinaryPersistenceManager(const BinaryPersistenceManager&) = delete;
    BinaryPersistenceManager& operator=(const BinaryPersistenceManager&) = delete;

    /// The caller releases the data with delete[]; null when there is no such parameter.
    char* readUnformattedParam(const std::string& name, int& size);
    /// Requires a store and a name that is not empty; false where the signal of that violation is
    /// blocked.
    bool writeUnformattedParam(const std::string& name, const char* data, int size);
    void eraseAllParams();

private:
    static std::unique_ptr<BinaryPersistence> buildPersistence(
        const std::string& scope, const std::string& domain, t_PersistenceMode mode);

    std::unique_ptr<BinaryPersistence> m_persistenceObject;
};
