#include "BinaryPersistenceManager.h"

#include "BinaryAppDataPersistence.h"
#include "CallMarker.h"
#include "Contract.h"

#include <utility>

namespace {

constexpr const char* UNIT = "Compatibility/Persistence/src/BinaryPersistenceManager";

} // namespace

BinaryPersistenceManager::BinaryPersistenceManager(
    const std::string& scope, const std::string& domain, t_PersistenceMode mode)
{
    CallMarker marker(
        "BinaryPersistenceManager", "BinaryPersistenceManager::constructor", true, this);
    m_persistenceObject = buildPersistence(scope, domain, mode);
}

BinaryPersistenceManager::BinaryPersistenceManager(
    std::unique_ptr<BinaryPersistence> persistenceObject)
    : m_persistenceObject(std::move(persistenceObject))
{
    CallMarker marker(
        "BinaryPersistenceManager", "BinaryPersistenceManager::constructor", true, this);
}

BinaryPersistenceManager::~BinaryPersistenceManager()
{
    CallMarker marker(
        "BinaryPersistenceManager", "BinaryPersistenceManager::destructor", false, this);
}

char* BinaryPersistenceManager::readUnformattedParam(const std::string& name, int& size)
{
    CallMarker marker("BinaryPersistenceManager::readUnformattedParam", this);
    return m_persistenceObject->readUnformattedParam(name, size);
}

bool BinaryPersistenceManager::writeUnformattedParam(
    const std::string& name, const char* data, int size)
{
    CallMarker marker("BinaryPersistenceManager::writeUnformattedParam", this);
    return Contract::require(m_persistenceObject != nullptr, "m_persistenceObject != NULL", UNIT) &&
           Contract::require(!name.empty(), "!name.empty()", UNIT) &&
           m_persistenceObject->writeUnformattedParam(name, data, size);
}

void BinaryPersistenceManager::eraseAllParams()
{
    CallMarker marker("BinaryPersistenceManager::eraseAllParams", this);
    m_persistenceObject->eraseAllParams();
}

std::unique_ptr<BinaryPersistence> BinaryPersistenceManager::buildPersistence(
    const std::string& scope, const std::string& domain, t_PersistenceMode mode)
{
    CallMarker marker("BinaryPersistenceManager::buildPersistence");
    return std::make_unique<BinaryAppDataPersistence>(scope, domain, mode);
}
