#include "DataFolder.h"

#include "CallMarker.h"
#include "FileSystemManagement.h"

std::string DataFolder::getBase(t_PersistenceMode mode)
{
    CallMarker marker("DataFolder::getBase");
    switch (mode) {
    case PERSISTENCE_ALL_USERS:
        return FileSystemManagement::getCommonAppDataDirectory();
    case PERSISTENCE_CURRENT_USER:
        return FileSystemManagement::getUserAppDataDirectory();
    }
    return {};
}

std::string DataFolder::create(const std::string& scope, t_PersistenceMode mode)
{
    CallMarker marker("DataFolder::create");
    const char separator = FileSystemManagement::getFolderSeparator();
    std::string path = getBase(mode) + separator + "Pelora" + separator + scope + separator;
    FileSystemManagement::createFolder(path, mode == PERSISTENCE_ALL_USERS ? 0755 : 0700);
    return path;
}
