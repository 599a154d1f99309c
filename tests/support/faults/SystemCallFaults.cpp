#include "SystemCallFaults.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <type_traits>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

SystemCallFaults* current = nullptr;

bool isCounted(const SystemCallFaults::Call& call)
{
    return call.name != "unlinkat" && call.name != "fcntl";
}

template<typename Real, typename... Arguments>
auto attempt(const SystemCallFaults::Call& call, Real real, Arguments... arguments)
{
    using Result = std::invoke_result_t<Real, Arguments...>;
    const int error = SystemCallFaults::enter(call);
    if (error == 0)
        return real(arguments...);
    errno = error;
    if constexpr (std::is_pointer_v<Result>)
        return Result{nullptr};
    else
        return static_cast<Result>(-1);
}

} // namespace

SystemCallFaults::SystemCallFaults()
{
    current = this;
}

SystemCallFaults::~SystemCallFaults()
{
    current = nullptr;
}

void SystemCallFaults::fail(const std::string& name, int error, int nth)
{
    m_faults.push_back({name, error, nth});
}

void SystemCallFaults::failAny(int error, int nth)
{
    m_faults.push_back({"", error, nth});
}

void SystemCallFaults::interrupt(
    const std::string& name, const std::string& path, std::function<void()> action)
{
    m_interrupted = {name, path};
    m_interruption = std::move(action);
}

void SystemCallFaults::interruptOpening(const std::string& path, std::function<void()> action)
{
    interrupt("openat", path, std::move(action));
}

std::vector<std::string> SystemCallFaults::steps() const
{
    std::vector<std::string> names;
    for (const Call& call : m_calls)
        names.push_back(call.name);
    return names;
}

int SystemCallFaults::counted() const
{
    return static_cast<int>(std::count_if(m_calls.begin(), m_calls.end(), isCounted));
}

int SystemCallFaults::record(const Call& call)
{
    m_calls.push_back(call);
    if (m_interruption && call.name == m_interrupted.name && call.path == m_interrupted.path)
        std::exchange(m_interruption, nullptr)();
    int error = 0;
    for (Fault& fault : m_faults) {
        const bool isMeant = fault.name.empty() ? isCounted(call) : call.name == fault.name;
        if (isMeant && --fault.callsLeft == 0)
            error = fault.error;
    }
    return error;
}

int SystemCallFaults::enter(const Call& call)
{
    return current != nullptr ? current->record(call) : 0;
}

std::size_t SystemCallFaults::transferSize(std::size_t wanted)
{
    return current != nullptr ? std::min(wanted, current->m_transferLimit.value_or(wanted))
                              : wanted;
}

std::optional<off_t> SystemCallFaults::claimedSize()
{
    return current != nullptr ? current->m_claimedSize : std::nullopt;
}

void SystemCallFaults::claim(const std::string& name, struct stat& status)
{
    if (current == nullptr)
        return;
    if (current->m_claimedDevice.first == name)
        status.st_dev = current->m_claimedDevice.second;
    if (current->m_claimedKind.first == name)
        status.st_mode = (status.st_mode & ~mode_t{S_IFMT}) | current->m_claimedKind.second;
}

void SystemCallFaults::claimEntropy(char* bytes, std::size_t size)
{
    if (current == nullptr || current->m_claimedEntropy.empty())
        return;
    const std::string& claimed = current->m_claimedEntropy;
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = claimed[i % claimed.size()];
}

extern "C" {

int realOpenat(int folder, const char* path, int flags, mode_t mode) __asm__("__real_openat");
int realFcntl(int file, int command, void* argument) __asm__("__real_fcntl");
int realFstat(int file, struct stat* status) __asm__("__real_fstat");
int realFstatat(int folder, const char* name, struct stat* status, int flags) __asm__(
    "__real_fstatat");
ssize_t realRead(int file, void* bytes, std::size_t size) __asm__("__real_read");
ssize_t realWrite(int file, const void* bytes, std::size_t size) __asm__("__real_write");
off_t realLseek(int file, off_t offset, int whence) __asm__("__real_lseek");
int realFtruncate(int file, off_t size) __asm__("__real_ftruncate");
int realFchown(int file, uid_t user, gid_t group) __asm__("__real_fchown");
int realFchmod(int file, mode_t mode) __asm__("__real_fchmod");
int realFsync(int file) __asm__("__real_fsync");
int realMkdir(const char* path, mode_t mode) __asm__("__real_mkdir");
int realRenameat(int from, const char* old, int to, const char* name) __asm__("__real_renameat");
int realUnlinkat(int folder, const char* name, int flags) __asm__("__real_unlinkat");
int realGetentropy(void* bytes, std::size_t size) __asm__("__real_getentropy");
DIR* realFdopendir(int folder) __asm__("__real_fdopendir");
dirent* realReaddir(DIR* listing) __asm__("__real_readdir");
int realPipe2(int* ends, int flags) __asm__("__real_pipe2");
FILE* realFdopen(int file, const char* mode) __asm__("__real_fdopen");
pid_t realWait(int* status) __asm__("__real_wait");
pid_t realWaitpid(pid_t process, int* status, int options) __asm__("__real_waitpid");

int openatCalled(int folder, const char* path, int flags, mode_t mode) __asm__("__wrap_openat");
// What openat() is called in a hardened build.
int openat2Called(int folder, const char* path, int flags) __asm__("__wrap___openat_2");
// A variadic function, of which the code passes pointers and 0 alone.
int fcntlCalled(int file, int command, void* argument) __asm__("__wrap_fcntl");
int fstatCalled(int file, struct stat* status) __asm__("__wrap_fstat");
int fstatatCalled(int folder, const char* name, struct stat* status, int flags) __asm__(
    "__wrap_fstatat");
ssize_t readCalled(int file, void* bytes, std::size_t size) __asm__("__wrap_read");
ssize_t writeCalled(int file, const void* bytes, std::size_t size) __asm__("__wrap_write");
off_t lseekCalled(int file, off_t offset, int whence) __asm__("__wrap_lseek");
int ftruncateCalled(int file, off_t size) __asm__("__wrap_ftruncate");
int fchownCalled(int file, uid_t user, gid_t group) __asm__("__wrap_fchown");
int fchmodCalled(int file, mode_t mode) __asm__("__wrap_fchmod");
int fsyncCalled(int file) __asm__("__wrap_fsync");
int mkdirCalled(const char* path, mode_t mode) __asm__("__wrap_mkdir");
int renameatCalled(int from, const char* old, int to, const char* name) __asm__("__wrap_renameat");
int unlinkatCalled(int folder, const char* name, int flags) __asm__("__wrap_unlinkat");
int getentropyCalled(void* bytes, std::size_t size) __asm__("__wrap_getentropy");
DIR* fdopendirCalled(int folder) __asm__("__wrap_fdopendir");
dirent* readdirCalled(DIR* listing) __asm__("__wrap_readdir");
int pipe2Called(int* ends, int flags) __asm__("__wrap_pipe2");
FILE* fdopenCalled(int file, const char* mode) __asm__("__wrap_fdopen");
pid_t waitCalled(int* status) __asm__("__wrap_wait");
pid_t waitpidCalled(pid_t process, int* status, int options) __asm__("__wrap_waitpid");

int openatCalled(int folder, const char* path, int flags, mode_t mode)
{
    const mode_t given = (flags & O_CREAT) != 0 ? mode : 0;
    return attempt({"openat", path, flags, given}, realOpenat, folder, path, flags, given);
}

int openat2Called(int folder, const char* path, int flags)
{
    return openatCalled(folder, path, flags, 0);
}

int fcntlCalled(int file, int command, void* argument)
{
    return attempt({"fcntl"}, realFcntl, file, command, argument);
}

int fstatCalled(int file, struct stat* status)
{
    const int result = attempt({"fstat"}, realFstat, file, status);
    if (result == 0)
        status->st_size = SystemCallFaults::claimedSize().value_or(status->st_size);
    return result;
}

int fstatatCalled(int folder, const char* name, struct stat* status, int flags)
{
    const int result = attempt({"fstatat", name}, realFstatat, folder, name, status, flags);
    if (result == 0)
        SystemCallFaults::claim(name, *status);
    return result;
}

ssize_t readCalled(int file, void* bytes, std::size_t size)
{
    return attempt({"read"}, realRead, file, bytes, SystemCallFaults::transferSize(size));
}

ssize_t writeCalled(int file, const void* bytes, std::size_t size)
{
    return attempt({"write"}, realWrite, file, bytes, SystemCallFaults::transferSize(size));
}

off_t lseekCalled(int file, off_t offset, int whence)
{
    return attempt({"lseek"}, realLseek, file, offset, whence);
}

int ftruncateCalled(int file, off_t size)
{
    return attempt({"ftruncate"}, realFtruncate, file, size);
}

int fchownCalled(int file, uid_t user, gid_t group)
{
    return attempt({"fchown"}, realFchown, file, user, group);
}

int fchmodCalled(int file, mode_t mode)
{
    return attempt({"fchmod"}, realFchmod, file, mode);
}

int fsyncCalled(int file)
{
    return attempt({"fsync"}, realFsync, file);
}

int mkdirCalled(const char* path, mode_t mode)
{
    return attempt({"mkdir", path}, realMkdir, path, mode);
}

int renameatCalled(int from, const char* old, int to, const char* name)
{
    return attempt({"renameat"}, realRenameat, from, old, to, name);
}

int unlinkatCalled(int folder, const char* name, int flags)
{
    return attempt({"unlinkat"}, realUnlinkat, folder, name, flags);
}

int getentropyCalled(void* bytes, std::size_t size)
{
    const int result = attempt({"getentropy"}, realGetentropy, bytes, size);
    if (result == 0)
        SystemCallFaults::claimEntropy(static_cast<char*>(bytes), size);
    return result;
}

DIR* fdopendirCalled(int folder)
{
    return attempt({"fdopendir"}, realFdopendir, folder);
}

dirent* readdirCalled(DIR* listing)
{
    return attempt({"readdir"}, realReaddir, listing);
}

int pipe2Called(int* ends, int flags)
{
    return attempt({"pipe2"}, realPipe2, ends, flags);
}

FILE* fdopenCalled(int file, const char* mode)
{
    return attempt({"fdopen"}, realFdopen, file, mode);
}

pid_t waitCalled(int* status)
{
    return attempt({"wait"}, realWait, status);
}

pid_t waitpidCalled(pid_t process, int* status, int options)
{
    return attempt({"waitpid"}, realWaitpid, process, status, options);
}

} // extern "C"
