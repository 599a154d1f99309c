#pragma once

#include "KFMutexGuard.h"
#include "RingFiles.h"
#include "UnlessMemoryRunsOut.h"

#include <atomic>
#include <deque>
#include <memory>
#include <string>

class FlushThread;

/// Where the lines of the tracer and of the logger go: the base of both.
///
///     PrintString --- "console": standard output, at once
///                 --- "msvc":    nowhere
///                 --- else:      pending queue --- WriteOnFile ---> base_0.txt -> base_1.txt -.
///                                                                       ^---------------------'
///
/// Lines wait in the queue for a write pass: at once when synchronous, else that of a background
/// thread, which the output owns. Any thread may call; the one recursive mutex guards everything
/// here and in the derived facility but the settings that are atomic. A file that cannot be opened
/// is told on standard error and the lines stay queued.
class LineOutput {
public:
    LineOutput(const LineOutput&) = delete;
    LineOutput& operator=(const LineOutput&) = delete;

    /// The folder of a bare file name, with its separator: must be set before the file name.
    void SetFolderName(const std::string& folderName);

    /// Starts the background thread that writes the pending lines, one however often this is
    /// called, unless synchronous. Without a file name the process ends with status 1.
    void Initialize();

    /// Chooses the output: "console", "msvc", or the base name of the ring, which goes on in the
    /// file written last. A name without "/" and "\" is placed in the folder, or beside the
    /// executable when there is none. Set the number of files first: it bounds the search. The
    /// output stays what it was when memory runs out.
    void SetFileName(const std::string& name);

    /// Remakes the current file's name from base name and index; the index wraps at the maximum.
    void UpdateFileName();

    /// Sends one finished line, its end of line included, to the output. An empty one is a
    /// violation. Kept: on the console an empty line follows each line.
    void PrintString(const std::string& line);

    /// One write pass of the queue to the ring.
    ///
    /// Kept: a first open that fails leaves the mutex held; and after a change of file the next
    /// pass empties the new file, so that the lines written to it by this pass are lost.
    void WriteOnFile();

    /// A pass of the background thread: WriteOnFile(), left out when another thread holds the mutex
    /// for a second, as it does for ever after an open that failed, and ended when memory runs out.
    /// So the thread always comes back to its loop, where it sees that the facility is gone.
    void writeInBackground();

    bool areAllMsgFlushed();

    /// Writes what is queued before the process ends, in bounded time: gives up when the mutex
    /// cannot be had within a second, when the file cannot be opened, and when memory runs out.
    /// Leaves no mutex held, and never throws.
    void drain();

    /// Whether the facility traces or logs.
    virtual bool isActive() const { return m_active; }
    virtual void setActive(bool active) { m_active = active; }
    /// Whether each line is written at once, without a background thread.
    bool isSynchronous() const { return m_synchronous; }
    void setSynchronous(bool synchronous) { m_synchronous = synchronous; }
    int getMaxFiles() const { return m_maxFiles; }
    void setMaxFiles(int maxFiles) { m_maxFiles = maxFiles; }
    int getMaxLinesPerFile() const { return m_maxLinesPerFile; }
    void setMaxLinesPerFile(int maxLines) { m_maxLinesPerFile = maxLines; }
    /// "console", "msvc" or the full name of the current ring file; empty until an output is set.
    std::string getCurrentFileName();

protected:
    /// `facility` ("Tracer") begins the messages on standard error; it must be a literal.
    explicit LineOutput(const char* facility);
    virtual ~LineOutput();

    /// Applies a configuration file and, when it leaves the facility active, initializes the
    /// output.
    template<typename ConfigFileParser>
    void readConfigFile(const char* fileName)
    {
        ConfigFileParser(fileName).parse();
        if (isActive())
            Initialize();
    }

    /// Switches off and, unless synchronous, writes what is pending.
    void finish();

    /// Lets the background thread go; what is pending is lost.
    void endBackgroundWriting();

    /// Repeats write passes until nothing is pending, for ever when the file cannot be opened;
    /// does nothing when synchronous or when the output is no file. The caller holds the mutex.
    void writeAllPending();

    /// Does the step with the mutex held; false, without it, when another thread holds the mutex
    /// for a second. Never throws: the step ends where memory runs out.
    template<typename Step>
    bool inBoundedTime(const Step& step) noexcept
    {
        if (!m_mutex.acquireWithin(1))
            return false;
        const KFMutexGuard guard(m_mutex, std::adopt_lock);
        unlessMemoryRunsOut(step);
        return true;
    }

    mutable KFMutex m_mutex{true};
    std::atomic<bool> m_active = false;

private:
    virtual std::shared_ptr<FlushThread> makeFlushThread() = 0;
    /// Ends the process with status 1, after a message on standard output.
    [[noreturn]] virtual void endWithoutFileName() = 0;

    bool hasFileName();
    bool writesFiles() const;
    std::string ringBase(const std::string& name) const;
    void resumeRing(std::string base);
    void takeFile(std::string base, long index);
    bool openCurrentFile();
    void openFile(RingFiles::Mode mode);
    void writePending();
    bool changeFile();

    const char* m_facility;
    std::atomic<bool> m_synchronous = false;
    std::atomic<int> m_maxFiles = 10;
    std::atomic<int> m_maxLinesPerFile = 100000;
    long m_fileIndex = 0;
    long m_linesInFile = 0;
    std::string m_baseFileName;
    std::string m_currentFileName;
    std::string m_folderName;
    RingFiles::File m_file; ///< open only inside a write pass
    bool m_truncateOnOpen = false;
    std::deque<std::string> m_pending;
    std::shared_ptr<FlushThread> m_flushThread;
};
