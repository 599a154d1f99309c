#include "LineOutput.h"

#include "Console.h"
#include "Contract.h"
#include "Diagnostics.h"
#include "FileSystemManagement.h"

#include <cstdlib>
#include <ctime>
#include <utility>

LineOutput::LineOutput(const char* facility) : m_facility(facility) {}

void LineOutput::SetFolderName(const std::string& folderName)
{
    m_mutex.acquire();
    m_folderName = folderName;
    m_mutex.release();
}

void LineOutput::SetFileName(const std::string& name)
{
    m_mutex.acquire();
    m_currentFileName.clear();
    if (name == "console" || name == "msvc") {
        m_baseFileName = name;
        m_currentFileName = name;
    } else {
        m_baseFileName = ringBase(name);
        resumeRing();
    }
    m_mutex.release();
}

void LineOutput::UpdateFileName()
{
    m_mutex.acquire();
    if (m_fileIndex >= m_maxFiles)
        m_fileIndex = 0;
    m_currentFileName = RingFiles::name(m_baseFileName, m_fileIndex);
    m_mutex.release();
}

void LineOutput::PrintString(const std::string& line)
{
    Contract::require(
        !line.empty(), "!(msg.empty())", "Infrastructure/ProgrammingServices/Tracer/src/LineOutput",
        46);
    m_mutex.acquire();
    if (m_currentFileName == "console") {
        Console::writeLine(line);
    } else if (writesFiles()) {
        m_pending.push_back(line);
        if (m_synchronous)
            WriteOnFile();
    }
    m_mutex.release();
}

void LineOutput::WriteOnFile()
{
    m_mutex.acquire();
    if (writesFiles()) {
        if (!openCurrentFile())
            return; // kept: the mutex stays held
        writePending();
    }
    m_mutex.release();
}

bool LineOutput::areAllMsgFlushed()
{
    m_mutex.acquire();
    const bool flushed = m_pending.empty();
    m_mutex.release();
    return flushed;
}

void LineOutput::drain()
{
    if (!acquireInBoundedTime())
        return;
    while (writesFiles() && !m_pending.empty() && openCurrentFile())
        writePending();
    m_mutex.release();
}

std::string LineOutput::getCurrentFileName()
{
    m_mutex.acquire();
    std::string name = m_currentFileName;
    m_mutex.release();
    return name;
}

void LineOutput::requireFileName(const char* message)
{
    m_mutex.acquire();
    const bool missing = m_baseFileName.empty();
    m_mutex.release();
    if (!missing)
        return;
    Console::writeLine(message);
    Diagnostics::drainAtExit();
    std::exit(1);
}

void LineOutput::writeAllPending()
{
    while (!m_synchronous && writesFiles() && !m_pending.empty())
        WriteOnFile();
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

void LineOutput::resumeRing()
{
    const long lastUsed = RingFiles::findLastUsed(m_baseFileName, m_maxFiles);
    const bool ringExists = lastUsed >= 0;
    m_fileIndex = ringExists ? lastUsed : 0;
    UpdateFileName();
    if (ringExists)
        m_linesInFile = RingFiles::countLines(m_currentFileName);
    else
        m_truncateOnOpen = true;
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
    if (!m_file)
        Console::writeError(std::string(m_facility) + " : can't open " + m_currentFileName + "\n");
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
    ++m_fileIndex;
    m_truncateOnOpen = true;
    UpdateFileName();
    m_linesInFile = 0;
    openFile(RingFiles::Mode::append);
    return m_file != nullptr;
}

// By the wall clock: the thread sanitizer does not know pthread_mutex_clocklock().
bool LineOutput::acquireInBoundedTime()
{
    std::timespec deadline{};
    clock_gettime(CLOCK_REALTIME, &deadline);
    deadline.tv_sec += 1;
    return pthread_mutex_timedlock(m_mutex.getHandle(), &deadline) == 0;
}
