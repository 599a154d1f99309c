#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Runs a fuzz target once over each file of the folders on its command line: the corpus is checked
// by the suite with any compiler, without the fuzzer.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::uint8_t> contentOf(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

int replay(const char* folder)
{
    int count = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        std::printf("%s\n", entry.path().c_str());
        std::fflush(stdout);
        const std::vector<std::uint8_t> content = contentOf(entry.path());
        LLVMFuzzerTestOneInput(content.data(), content.size());
        ++count;
    }
    if (error)
        std::fprintf(stderr, "reading %s: %s\n", folder, error.message().c_str());
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
