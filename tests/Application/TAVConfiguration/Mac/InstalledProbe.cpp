#include "InstalledProbe.h"

#include "FileContent.h"
#include "Pipe.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>

#include <sys/wait.h>
#include <unistd.h>

namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers(texts.size() + 1, nullptr);
    std::ranges::transform(texts, pointers.begin(), [](std::string& text) { return text.data(); });
    return pointers;
}

std::string readAll(int descriptor)
{
    std::string text;
    std::array<char, 4096> part{};
    for (ssize_t count = 1; count > 0;) {
        count = read(descriptor, part.data(), part.size());
        text.append(part.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return text;
}

} // namespace

/// The checkout may be out of reach for the ordinary user that some tests run the probe as.
std::string InstalledProbe::withReadableSuppressions(const std::string& options) const
{
    const std::string name = "suppressions=";
    const std::size_t start = options.find(name);
    if (start == std::string::npos)
        return options;
    const std::size_t path = start + name.size();
    const std::size_t length = options.find(':', path) - path;
    std::string readable = options;
    m_folder.write("suppressions", contentOf(options.substr(path, length)));
    return readable.replace(path, length, m_folder.file("suppressions"));
}

InstalledProbe::InstalledProbe()
    : m_environment{
          {"XDG_DATA_HOME", m_home.path()},
          {"TAV_COMMON_DATA_DIR", "/dev/null/none"},
          {"LANGUAGE", "en"},
          {"PATH", "/usr/bin:/bin"}}
{
    for (const char* sanitizer : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"})
        if (const char* options = std::getenv(sanitizer))
            m_environment[sanitizer] = withReadableSuppressions(options);
    std::filesystem::copy_file(TAV_START_UP_PROBE, m_folder.file("TavConfiguration"));
    m_folder.write(
        "ID.txt", "COMMERCIAL_VERSION=1.2\nPRODUCT_NAME=Tool\nBU_NAME=Unit\nBUILD_TARGET=Target\n"
                  "REFERENCE_VERSION=3.4\nPRODUCT_VERSION=5.6\nUPGRADE_CODE={CODE}\n");
    m_folder.write(
        "logger.cfg", "LOG_ON\nLOG_SET_MSG_FILTER LOG_LEVEL_0\nLOG_SET_FILE_NAME console\n");
    m_folder.write("tracer.cfg", "");
    m_folder.write("Localizer_TavConfiguration_en.cfg", "TITLE=lower case en\n");
    m_folder.write("Localizer_TavConfiguration_EN.cfg", "TITLE=upper case EN\n");
}

InstalledProbe::Outcome InstalledProbe::run(
    const std::vector<std::string>& arguments, const std::string& name) const
{
    const std::string program = m_folder.file("TavConfiguration");
    std::vector<std::string> words{name.empty() ? program : name};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables;
    for (const auto& [variable, value] : m_environment)
        variables.push_back(std::string(variable).append("=").append(value));
    const TemporaryFolder errors;
    Pipe output;
    output.open();

    const pid_t process = fork();
    if (process == 0) {
        dup2(output.writeEnd.get(), STDOUT_FILENO);
        if (std::freopen(errors.file("errors").c_str(), "w", stderr) != nullptr)
            execve(program.c_str(), pointersTo(words).data(), pointersTo(variables).data());
        _exit(127);
    }
    close(output.writeEnd.release());
    std::string text = readAll(output.readEnd.get());
    int status = 0;
    waitpid(process, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text, errors.read("errors")};
}
