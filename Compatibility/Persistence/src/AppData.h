#pragma once

#include <list>
#include <string>

/// One domain's view of the application data: each operation is AppDataManager's, for the domain.
class AppData {
public:
    explicit AppData(std::string domain);
    ~AppData();

    AppData(const AppData&) = delete;
    AppData& operator=(const AppData&) = delete;

    static void setGlobalScope(const std::string& scope);
    static void removeAllData(const std::string& scope);

    std::string getAllUsersDataPath() const;
    void createAllUsersDataFolder() const;
    std::string getPathForFile(const std::string& file) const;
    std::list<std::string> getFiles() const;

    bool readParam(const std::string& name, std::string& value) const;
    bool writeParam(const std::string& name, const std::string& value) const;
    bool writeParamForAllUsers(const std::string& name, const std::string& value) const;

    char* readUnformattedParam(const std::string& name, int& size) const;
    bool writeUnformattedParam(const std::string& name, const char* data, int size) const;
    bool writeUnformattedParamForAllUsers(
        const std::string& name, const char* data, int size) const;

    /// AppDataManager::removeDomainData().
    void removeData() const;

private:
    std::string m_domain;
};
