#include "SafeFile.h"

#include <fstream>
#include <iterator>

std::optional<std::string> SafeFile::read(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), {});
}

std::string SafeFile::replace(const std::string& path, std::string_view content, Backup /*backup*/)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << content;
    out.close();
    return out ? std::string() : "cannot write";
}
