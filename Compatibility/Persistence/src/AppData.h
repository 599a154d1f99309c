#pragma once

#include <string>

/// One domain's view of the application data: each operation is AppDataManager's, for the domain.
class AppData {
public:
    explicit AppData(const std::string& domain);
    ~AppData();

    AppData(const AppData&) = delete;
    AppData& operator=(const AppData&) = delete;

    static void setGlobalScope(const std::string& scope);

    std::string getAllUsersDataPath() const;
    std::string getPathForFile(const std::string& file) const;

private:
    std::string m_domain;
};
