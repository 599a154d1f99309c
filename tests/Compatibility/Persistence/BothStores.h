#pragma once

#include "AppDataPersistence.h"
#include "BinaryAppDataPersistence.h"
#include "OwnedBytes.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

// One face for the store of texts and the store of bytes, so that what must hold of both is tested
// of both. The texts of these tests are what either can hold.

class TextStore {
public:
    static constexpr const char* FILE_NAME = "Pelora/scope/domain.dat";

    static std::string contentOf(const std::string& name, const std::string& value)
    {
        return name + "=" + value + "\n";
    }

    bool write(const std::string& name, const std::string& value)
    {
        return m_store.writeParam(name, value);
    }
    std::optional<std::string> read(const std::string& name)
    {
        std::string value;
        return m_store.readParam(name, value) ? std::optional(value) : std::nullopt;
    }
    void erase() { m_store.eraseAllParams(); }

private:
    AppDataPersistence m_store{"scope", "domain", PERSISTENCE_CURRENT_USER};
};

class ByteStore {
public:
    static constexpr const char* FILE_NAME = "Pelora/scope/domain_binary.dat";

    static std::string contentOf(const std::string& name, const std::string& value)
    {
        return t_Param(name, value.data(), static_cast<int>(value.size())).marshall();
    }

    bool write(const std::string& name, const std::string& value)
    {
        return m_store.writeUnformattedParam(name, value.data(), static_cast<int>(value.size()));
    }
    std::optional<std::string> read(const std::string& name)
    {
        int size = 0;
        const OwnedBytes bytes(m_store.readUnformattedParam(name, size));
        if (bytes == nullptr)
            return std::nullopt;
        return std::string(bytes.get(), static_cast<std::size_t>(size));
    }
    void erase() { m_store.eraseAllParams(); }

private:
    BinaryAppDataPersistence m_store{"scope", "domain", PERSISTENCE_CURRENT_USER};
};

using BothStores = testing::Types<TextStore, ByteStore>;

struct StoreNames {
    template<typename Store>
    static std::string GetName(int /*index*/)
    {
        return std::is_same_v<Store, TextStore> ? "Texts" : "Bytes";
    }
};
