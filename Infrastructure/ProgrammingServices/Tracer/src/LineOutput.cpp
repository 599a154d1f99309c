#include "LineOutput.h"

#include "Console.h"
#include "Contract.h"
#include "FileSystemManagement.h"
#include "FlushThread.h"

#include <utility>

LineOutput::LineOutput(const char* facility) : m_facility(facility) {}

LineOutput::~LineOutput() = default;

void LineOutput::Initialize()
{
    if (!hasFileName())
        endWithoutFileName();
    const KFMutexGuard guard(m_mutex);
    if (m_synchronous || m_flushThread != nullptr)
        return;
    m_flushThread = makeFlushThread();
    if (m_flushThread->start())
        return;
    m_flushThread.reset();
    m_synchronous = true; // without a thread each line is written at once
}

void LineOutput::SetFolderName(const std::string& folderName)
{
    const KFMutexGuard guard(m_mutex);
    m_folderName = folderName;
}

void LineOutput::SetFileName(const std::string& name)
{
    const KFMutexGuard guard(m_mutex);
    if (name == "console" || name == "msvc") {
        m_baseFileName = name;
        m_currentFileName = name;
    } else {
        resumeRing(ringBase(name));
    }
}

void LineOutput::UpdateFileName()
{
    const KFMutexGuard guard(m_mutex);
    takeFile(m_baseFileName, m_fileIndex);
}

void LineOutput::PrintString(const std::string& line)
{
    if (!Contract::require(
            !line.empty(), "!(msg.empty())",
            "Infrastructure/ProgrammingServices/Tracer/src/LineOutput"))
        return;
    const KFMutexGuard guard(m_mutex);
    if (m_currentFileName == "console") {
        Console::writeLine(line);
    } else if (writesFiles()) {
        m_pending.push_back(line);
        if (m_synchronous)
            WriteOnFile();
    }
}

void LineOutput::WriteOnFile()
{
    const KFMutexGuard guard(m_mutex);
    if (!writesFiles())
        return;
    if (openCurrentFile())
        writePending();
    else
        m_mutex.acquire(); // Kept: nobody releases this one, the lines of other threads wait
}

void LineOutput::writeInBackground()
{
    inBoundedTime([this] { WriteOnFile(); });
}

bool LineOutput::areAllMsgFlushed()
{
    const KFMutexGuard guard(m_mutex);
    return m_pending.empty();
}

void LineOutput::drain()
{
    inBoundedTime([this] {
        while (writesFiles() && !m_pending.empty() && openCurrentFile())
            writePending();
    });
}

std::string LineOutput::getCurrentFileName()
{
    const KFMutexGuard guard(m_mutex);
    return m_currentFileName;
}

void LineOutput::finish()
{
    const KFMutexGuard guard(m_mutex);
    setActive(false);
    writeAllPending();
}

void LineOutput::endBackgroundWriting()
{
    if (m_flushThread != nullptr)
        m_flushThread->letGo();
}

void LineOutput::writeAllPending()
{
    while (!m_synchronous && writesFiles() && !m_pending.empty())
        WriteOnFile();
}

bool LineOutput::hasFileName()
{
    const KFMutexGuard guard(m_mutex);
    return !m_baseFileName.empty();
}

bool LineOutput::writesFiles() const
{
    return m_currentFileName != "console" && m_currentFileName != "msvc";
}

std::string LineOutput::ringBase(const std::string& name) const
{
    if (name.find_first_of("/\\") != std::string::npos)
        return name;
    if (m_folderName.empty())
        return FileSystemManagement::getCurrentOutputDirectory() + name;
    return m_folderName + name;
}

void LineOutput::resumeRing(std::string base)
{
    const long lastUsed = RingFiles::findLastUsed(base, m_maxFiles);
    const bool ringExists = lastUsed >= 0;
    takeFile(std::move(base), ringExists ? lastUsed : 0);
    if (ringExists)
        m_linesInFile = RingFiles::countLines(m_currentFileName);
    else
        m_truncateOnOpen = true;
}

// The name, which needs memory, comes first: without it the output stays what it was.
void LineOutput::takeFile(std::string base, long index)
{
    const long taken = index < m_maxFiles ? index : 0;
    m_currentFileName = RingFiles::name(base, taken);
    m_baseFileName = std::move(base);
    m_fileIndex = taken;
}

bool LineOutput::openCurrentFile()
{
    openFile(
        std::exchange(m_truncateOnOpen, false) ? RingFiles::Mode::empty : RingFiles::Mode::append);
    return m_file != nullptr;
}

// The file of a pass that a crash interrupted on this thread is closed here, with what it holds.
void LineOutput::openFile(RingFiles::Mode mode)
{
    m_file = RingFiles::open(m_currentFileName, mode);
    if (m_file)
        return;
    unlessMemoryRunsOut([this] {
        Console::writeError(std::string(m_facility) + " : can't open " + m_currentFileName + "\n");
    });
}

void LineOutput::writePending()
{
    while (!m_pending.empty()) {
        std::fputs(m_pending.front().c_str(), m_file.get());
        m_pending.pop_front();
        ++m_linesInFile;
        if (m_linesInFile >= m_maxLinesPerFile && !changeFile())
            return;
    }
    m_file.reset();
}

// Kept: m_truncateOnOpen stays set although the new file is opened here.
bool LineOutput::changeFile()
{
    m_file.reset();
    takeFile(m_baseFileName, m_fileIndex + 1);
    m_truncateOnOpen = true;
    m_linesInFile = 0;
    openFile(RingFiles::Mode::append);
    return m_file != nullptr;
}
