#pragma once

#include "BinaryPersistenceManager.h"
#include "PersistenceManager.h"

#include <array>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <utility>

/// The parameter stores of one domain: the user's first, all users' second.
template<typename Manager>
using t_PersistencePair = std::pair<std::unique_ptr<Manager>, std::unique_ptr<Manager>>;

/// Domain to its stores.
using st_PersistenceObjects = std::map<std::string, t_PersistencePair<PersistenceManager>>;
using st_BinaryPersistenceObjects =
    std::map<std::string, t_PersistencePair<BinaryPersistenceManager>>;

/// Where the product's persistent data live: every path is made of one of the two application data
/// folders (the user's, all users'), the maker's folder, the global scope and a data domain.
///
/// Named parameters of a domain, texts and bytes, are kept in files there, the user's and all
/// users'; a parameter that the user does not have is all users'. The stores of a domain are made
/// at the first request, with their folders, and kept.
///
/// One object for the whole process, never destroyed and not locked: the tool uses it from its main
/// thread. The global scope is set once at start-up, before any path is asked for: stores made
/// before a change keep their files.
class AppDataManager {
public:
    /// The one manager, created at the first call.
    static AppDataManager* getInstance();

    AppDataManager(const AppDataManager&) = delete;
    AppDataManager& operator=(const AppDataManager&) = delete;

    void setGlobalScope(const std::string& scope);

    /// The data folders of a scope, without a separator at their end.
    void getDataPath(
        std::string& userPath, std::string& allUsersPath, const std::string& scope) const;

    /// The all-users data folder of the global scope, with a separator at its end.
    std::string getAllUsersDataPath() const;

    /// The folder, with a separator at its end, that holds the file: the domain's user folder, its
    /// all-users folder or its folder beside the executable, whichever has it first. A file that is
    /// nowhere gets the user folder, which need not exist: whoever writes the file makes it.
    std::string getPathForFile(const std::string& domain, const std::string& file) const;

    /// Makes the all-users data folder of the global scope, which others may read but not write.
    void createAllUsersDataFolder() const;

    /// What the domain's user folder and all-users folder hold, at all levels, as sorted relative
    /// paths, each once. Kept: a name without a full stop is not listed.
    std::list<std::string> getFiles(const std::string& domain) const;

    const t_PersistencePair<PersistenceManager>& getPersistence(const std::string& domain) const;
    const t_PersistencePair<BinaryPersistenceManager>& getBinaryPersistence(
        const std::string& domain) const;

    /// The user's value, else all users'; false, with `value` unchanged, when there is none.
    bool readParam(const std::string& domain, const std::string& name, std::string& value) const;
    bool writeParam(
        const std::string& domain, const std::string& name, const std::string& value) const;
    bool writeParamForAllUsers(
        const std::string& domain, const std::string& name, const std::string& value) const;

    /// The user's data, else all users', which the caller releases with delete[]; null when there
    /// are none.
    char* readUnformattedParam(const std::string& domain, const std::string& name, int& size) const;
    bool writeUnformattedParam(
        const std::string& domain, const std::string& name, const char* data, int size) const;
    bool writeUnformattedParamForAllUsers(
        const std::string& domain, const std::string& name, const char* data, int size) const;

    /// Erases the domain's parameters, the user's and all users'.
    void removeDomainData(const std::string& domain) const;

    /// Deletes the folders of a scope and the downloads, then the maker's when nothing is left in
    /// it, the user's and all users'. Kept: the scope is taken as it is, ".." and all, and a link
    /// in the place of a folder has its target emptied.
    void removeAllData(const std::string& scope) const;

private:
    AppDataManager();

    /// The domain's user folder and its all-users folder, with a separator at their end.
    std::array<std::string, 2> getDomainFolders(const std::string& domain) const;

    static AppDataManager* s_instance;

    std::string m_globalScope;
    mutable st_PersistenceObjects m_persistence;
    mutable st_BinaryPersistenceObjects m_binaryPersistence;
};
