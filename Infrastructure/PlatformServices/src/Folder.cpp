#include "Folder.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include <dirent.h>

namespace {

struct CloseListing {
    void operator()(DIR* listing) const { closedir(listing); }
};
using Listing = std::unique_ptr<DIR, CloseListing>;

// From the first entry, wherever an earlier listing ended. A second opening of the folder instead
// would need the right to search it.
Listing openListing(int folder)
{
    FileDescriptor own(fcntl(folder, F_DUPFD_CLOEXEC, 0));
    Listing listing(own.isOpen() ? fdopendir(own.get()) : nullptr);
    if (!listing)
        return nullptr;
    own.release();
    rewinddir(listing.get());
    return listing;
}

} // namespace

Folder::Folder(int parent, const std::string& path, int flags)
    : m_descriptor(openat(parent, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags)),
      m_error(m_descriptor.isOpen() ? 0 : errno, std::generic_category())
{
}

std::optional<std::vector<std::string>> Folder::names() const
{
    const Listing listing = openListing(m_descriptor.get());
    if (!listing)
        return std::nullopt;

    std::vector<std::string> names;
    errno = 0; // readdir() tells the end from a failure by it alone
    while (const dirent* entry = readdir(listing.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(name);
        errno = 0;
    }
    if (errno != 0)
        return std::nullopt;
    std::sort(names.begin(), names.end());
    return names;
}
