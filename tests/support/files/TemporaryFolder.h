#pragma once

#include "FileContent.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

/// A fresh folder for one test, removed with its content at the end of the scope.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "tav-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("cannot make a temporary folder");
        m_path = pattern;
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return m_path; }
    std::string file(std::string_view name) const { return m_path + "/" + std::string(name); }

    /// Writes a file inside the folder and returns its full path.
    std::string write(std::string_view name, std::string_view content) const
    {
        std::ofstream(file(name), std::ios::binary) << content;
        return file(name);
    }

    /// The bytes of a file inside the folder; empty when there is none.
    std::string read(std::string_view name) const { return contentOf(file(name)); }

private:
    std::string m_path;
};
