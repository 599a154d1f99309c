#include "PersistenceManager.h"

#include "AppDataPersistence.h"
#include "CallMarker.h"
#include "Contract.h"

#include <utility>

namespace {

constexpr const char* UNIT = "Compatibility/Persistence/src/PersistenceManager";

} // namespace

PersistenceManager::PersistenceManager(
    const std::string& scope, const std::string& domain, t_PersistenceMode mode)
{
    CallMarker marker("PersistenceManager", "PersistenceManager::constructor", true, this);
    m_persistenceObject = buildPersistence(scope, domain, mode);
}

PersistenceManager::PersistenceManager(std::unique_ptr<StringPersistence> persistenceObject)
    : m_persistenceObject(std::move(persistenceObject))
{
    CallMarker marker("PersistenceManager", "PersistenceManager::constructor", true, this);
}

PersistenceManager::~PersistenceManager()
{
    CallMarker marker("PersistenceManager", "PersistenceManager::destructor", false, this);
}

bool PersistenceManager::readParam(const std::string& name, std::string& value)
{
    CallMarker marker("PersistenceManager::readParam", this);
    return m_persistenceObject->readParam(name, value);
}

bool PersistenceManager::writeParam(const std::string& name, const std::string& value)
{
    CallMarker marker("PersistenceManager::writeParam", this);
    return Contract::require(m_persistenceObject != nullptr, "m_persistenceObject != NULL", UNIT) &&
           Contract::require(!name.empty(), "!name.empty()", UNIT) &&
           m_persistenceObject->writeParam(name, value);
}

void PersistenceManager::eraseAllParams()
{
    CallMarker marker("PersistenceManager::eraseAllParams", this);
    m_persistenceObject->eraseAllParams();
}

std::unique_ptr<StringPersistence> PersistenceManager::buildPersistence(
    const std::string& scope, const std::string& domain, t_PersistenceMode mode)
{
    CallMarker marker("PersistenceManager::buildPersistence");
    return std::make_unique<AppDataPersistence>(scope, domain, mode);
}
