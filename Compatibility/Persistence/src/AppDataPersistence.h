#pragma once

#include "KFMutex.h"
#include "ParameterText.h"
#include "StringPersistence.h"
#include "t_PersistenceMode.h"

#include <string>

/// The text parameters of one domain, kept in the file "<domain>.dat".
///
/// Every operation reads the whole file, and a write replaces it whole: another process sees the
/// old parameters or the new, and of two that write at once the last one's stay. Where the folder
/// takes no new file it is written in place: one that reads meanwhile may see a mix, which no
/// write starts from, and of two that write at once one fails.
///
/// A failed write leaves the old file; a missing file holds no parameters. A mutex guards what
/// reads the file, and that alone: nothing is logged while it is held, and writes are not
/// coordinated.
class AppDataPersistence : public StringPersistence {
public:
    /// Makes the folder of the file when it is missing.
    AppDataPersistence(const std::string& scope, const std::string& domain, t_PersistenceMode mode);
    ~AppDataPersistence() override;

    /// Makes the folder of the file again when it is gone. False also for what a line cannot hold:
    /// a name with "=" or a line feed, a value with a line feed; and when there is a file that
    /// cannot be read, whose parameters would be lost.
    bool writeParam(const std::string& name, const std::string& value) override;
    bool readParam(const std::string& name, std::string& value) override;
    /// Empties the file; no file is made for it.
    void eraseAllParams() override;

    /// False, with an empty map, when the file cannot be read.
    bool readPersistenceFile(t_paramMap& parameters);

    /// The file of a domain; makes the folders that are missing above it.
    static std::string getPersistenceFilePath(
        const std::string& scope, const std::string& domain, t_PersistenceMode mode);

private:
    /// SafeFile::readForChange() under the mutex.
    std::string readForChange(std::string& content);
    bool writePersistenceFile(const ParameterText& text);

    std::string m_filePath;
    t_PersistenceMode m_mode;
    KFMutex m_mutex{true};
};
