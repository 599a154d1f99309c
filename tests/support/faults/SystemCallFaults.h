#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <sys/stat.h>

/// Makes system calls fail on purpose for one scope and records them, in a test that links to
/// tav::system_call_faults: there the linker leads the code's calls here.
///
/// At most one object at a time, and only one thread meanwhile.
class SystemCallFaults {
public:
    struct Call {
        std::string name;
        std::string path{}; // of openat(), fstatat() and mkdir() alone
        int flags = 0;      // of openat() alone
        mode_t mode = 0;    // of openat() that may create
    };

    SystemCallFaults();
    ~SystemCallFaults();

    SystemCallFaults(const SystemCallFaults&) = delete;
    SystemCallFaults& operator=(const SystemCallFaults&) = delete;

    /// The `nth` call of the name from now on (1: the next one) fails with the error.
    void fail(const std::string& name, int error, int nth = 1);
    /// The `nth` call of any name fails. Left out are unlinkat(), since no clean-up can make good
    /// for itself, and fcntl(), since a lock that cannot be had need not be a failure.
    void failAny(int error, int nth);
    /// Right before the next call of the name (and path, for those that have one), once, the action
    /// happens: what another process does meanwhile.
    void interrupt(const std::string& name, const std::string& path, std::function<void()> action);
    void interruptOpening(const std::string& path, std::function<void()> action);
    /// read() and write() move at most this many bytes at a time.
    void limitTransfers(std::size_t bytes) { m_transferLimit = bytes; }
    /// fstat() tells this size for every file.
    void claimSize(off_t size) { m_claimedSize = size; }
    /// getentropy() gives these bytes, over and over.
    void claimEntropy(std::string bytes) { m_claimedEntropy = std::move(bytes); }
    /// fstatat() tells this device for every entry of the name.
    void claimDevice(const std::string& name, dev_t device) { m_claimedDevice = {name, device}; }
    /// fstatat() tells this kind of file (S_IFSOCK, ...) for every entry of the name.
    void claimKind(const std::string& name, mode_t kind) { m_claimedKind = {name, kind}; }

    /// What was called so far, failed calls included.
    const std::vector<Call>& calls() const { return m_calls; }
    /// Their names, in order.
    std::vector<std::string> steps() const;
    /// How many calls failAny() has counted.
    int counted() const;

    /// For the functions that stand in for the system's: the error to fail with, 0 to go on.
    static int enter(const Call& call);
    static std::size_t transferSize(std::size_t wanted);
    static std::optional<off_t> claimedSize();
    static void claim(const std::string& name, struct stat& status);
    static void claimEntropy(char* bytes, std::size_t size);

private:
    struct Fault {
        std::string name; // empty: any name
        int error;
        int callsLeft;
    };

    int record(const Call& call);

    std::vector<Fault> m_faults;
    Call m_interrupted;
    std::function<void()> m_interruption;
    std::vector<Call> m_calls;
    std::optional<std::size_t> m_transferLimit;
    std::optional<off_t> m_claimedSize;
    std::string m_claimedEntropy;
    std::pair<std::string, dev_t> m_claimedDevice;
    std::pair<std::string, mode_t> m_claimedKind;
};
