#pragma once

#include "ParameterRecords.h"
#include "t_PersistenceMode.h"

#include <string>

/// A store of named byte buffers.
class BinaryPersistence {
public:
    BinaryPersistence();
    virtual ~BinaryPersistence();

    BinaryPersistence(const BinaryPersistence&) = delete;
    BinaryPersistence& operator=(const BinaryPersistence&) = delete;

    // The order of the virtual operations is fixed: it is the order of the slots.

    /// Adds or replaces the parameter by a copy of `size` bytes; false when it could not be stored.
    virtual bool writeUnformattedParam(const std::string& name, const char* data, int size) = 0;
    /// A new copy of the data, which the caller releases with delete[]; not null for data of size
    /// 0. Null, with `size` unchanged, when there is no such parameter.
    virtual char* readUnformattedParam(const std::string& name, int& size) = 0;
    virtual void eraseAllParams() = 0;
    /// The file of a domain; makes the folders that are missing above it.
    virtual std::string getPersistenceFilePath(
        const std::string& scope, const std::string& domain, t_PersistenceMode mode) = 0;
    /// False, with an empty map, when the file cannot be read.
    virtual bool readPersistenceFile(t_BinaryParamMap& parameters) = 0;
    virtual bool writePersistenceFile(const t_BinaryParamMap& parameters) = 0;
};
