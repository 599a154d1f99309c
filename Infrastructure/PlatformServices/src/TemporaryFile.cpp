#include "TemporaryFile.h"

#include "RegularFile.h"
#include "SystemCall.h"

#include <array>

#include <fcntl.h>
#include <unistd.h>

namespace {

std::string unpredictableName()
{
    std::array<unsigned char, 16> bytes{};
    checked(getentropy(bytes.data(), bytes.size()), "choosing a temporary name");
    std::string name = ".tav-";
    for (const unsigned char byte : bytes) {
        constexpr std::string_view digits = "0123456789abcdef";
        name += digits[byte >> 4U];
        name += digits[byte & 15U];
    }
    return name;
}

} // namespace

TemporaryFile::TemporaryFile(int folder) : m_folder(folder), m_name(unpredictableName()) {}

// Once the delegated constructor has returned, the destructor removes the file whatever fails.
TemporaryFile::TemporaryFile(int folder, std::string_view content, const struct stat* model)
    : TemporaryFile(folder)
{
    // Nobody but the owner may open it before it has the mode that it is to have.
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    const RegularFile file(folder, m_name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, ownerOnly);
    file.write(content);
    if (model != nullptr)
        file.setOwner(model->st_uid, model->st_gid);
    constexpr mode_t newFile = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;
    constexpr mode_t permissions = S_IRWXU | S_IRWXG | S_IRWXO;
    file.setMode(model != nullptr ? model->st_mode & permissions : newFile);
    file.sync();
}

TemporaryFile::~TemporaryFile()
{
    if (!m_name.empty())
        unlinkat(m_folder, m_name.c_str(), 0);
}

void TemporaryFile::renameTo(const std::string& name)
{
    checked(renameat(m_folder, m_name.c_str(), m_folder, name.c_str()), "renaming the file");
    m_name.clear();
}
