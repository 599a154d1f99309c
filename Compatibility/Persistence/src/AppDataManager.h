#pragma once

#include <string>

/// Where the product's persistent data live: every path is made of one of the two application data
/// folders (the user's, all users'), the maker's folder, the global scope and a data domain.
///
/// One object for the whole process, never destroyed and not locked: the tool uses it from its main
/// thread. The global scope is set once at start-up, before any path is asked for. Paths are only
/// computed; no folder is made.
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
    /// nowhere gets the user folder, which need not exist.
    std::string getPathForFile(const std::string& domain, const std::string& file) const;

private:
    AppDataManager();

    static AppDataManager* s_instance;

    std::string m_globalScope;
};
