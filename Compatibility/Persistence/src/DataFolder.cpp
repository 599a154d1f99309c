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

std::string DataFolder::getPath(const std::string& scope, t_PersistenceMode mode)
{
    CallMarker marker("DataFolder::getPath");
    const char separator = FileSystemManagement::getFolderSeparator();
    return getBase(mode) + separator + "Pelora" + separator + scope;
}

void DataFolder::makeMissing(const std::string& folder, t_PersistenceMode mode)
{
    CallMarker marker("DataFolder::makeMissing");
    const unsigned int permissions = mode == PERSISTENCE_ALL_USERS ? 0755 : 0700;
    if (!FileSystemManagement::existFile(folder))
        FileSystemManagement::makeFolder(folder, permissions);
}

std::string DataFolder::create(const std::string& scope, t_PersistenceMode mode)
{
    CallMarker marker("DataFolder::create");
    makeMissing(getPath("", mode), mode);
    std::string folder = getPath(scope, mode) + FileSystemManagement::getFolderSeparator();
    makeMissing(folder, mode);
    return folder;
}
