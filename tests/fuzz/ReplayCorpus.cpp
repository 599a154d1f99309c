#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Runs a fuzz target once over each file on its command line, and each file of the folders there:
// the corpus is checked by the suite with any compiler, without the fuzzer.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::uint8_t> contentOf(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void replayFile(const std::filesystem::path& path)
{
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    const std::vector<std::uint8_t> content = contentOf(path);
    LLVMFuzzerTestOneInput(content.data(), content.size());
}

/// How many inputs there were.
int replay(const std::filesystem::path& path)
{
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error)) {
        replayFile(path);
        return 1;
    }
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(path, error)) {
        replayFile(entry.path());
        ++count;
    }
    if (error)
        std::fprintf(stderr, "reading %s: %s\n", path.c_str(), error.message().c_str());
    return count;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    int count = 0;
    for (int i = 1; i < argumentCount; ++i)
        count += replay(arguments[i]);
    std::printf("%d inputs\n", count);
    return count == 0 ? 1 : 0;
}
