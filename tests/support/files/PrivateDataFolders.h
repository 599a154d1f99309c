#pragma once

#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

/// Application data folders of one test's own: the user's and all users', both fresh and empty.
class PrivateDataFolders {
public:
    const TemporaryFolder& user() const { return m_user; }
    const TemporaryFolder& allUsers() const { return m_allUsers; }

private:
    TemporaryFolder m_user;
    TemporaryFolder m_allUsers;
    ScopedEnvironment m_userVariable{"XDG_DATA_HOME", m_user.path()};
    ScopedEnvironment m_allUsersVariable{"TAV_COMMON_DATA_DIR", m_allUsers.path()};
};
