#pragma once

#include "BinaryPersistence.h"

#include <cstddef>

/// The binary parameters of one domain, kept in the file "<domain>_binary.dat".
///
/// Every operation reads the whole file, and a write replaces it whole: another process sees the
/// old parameters or the new, and of two that write at once the last one's stay. Where the folder
/// takes no new file it is written in place: one that reads meanwhile may see a mix, which no
/// write starts from, and of two that write at once one fails.
///
/// A failed write leaves the old file; a missing file holds no parameters. Nothing behind a broken
/// record is read, and the next write drops it, with a warning in the log. Not locked: one object
/// is for one thread.
class BinaryAppDataPersistence : public BinaryPersistence {
public:
    /// Makes the folder of the file when it is missing.
    BinaryAppDataPersistence(
        const std::string& scope, const std::string& domain, t_PersistenceMode mode);
    ~BinaryAppDataPersistence() override;

    /// Makes the folder of the file again when it is gone. False also for a negative size, for
    /// bytes that are null where the size is not 0, and when there is a file that cannot be read,
    /// whose parameters would be lost.
    bool writeUnformattedParam(const std::string& name, const char* data, int size) override;
    char* readUnformattedParam(const std::string& name, int& size) override;
    /// Leaves an empty file, which is made when there is none.
    void eraseAllParams() override;
    std::string getPersistenceFilePath(
        const std::string& scope, const std::string& domain, t_PersistenceMode mode) override;
    bool readPersistenceFile(t_BinaryParamMap& parameters) override;
    bool writePersistenceFile(const t_BinaryParamMap& parameters) override;

private:
    void logDropped(std::size_t size) const;

    std::string m_filePath;
    t_PersistenceMode m_mode;
};
