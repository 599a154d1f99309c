#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// One binary parameter: a name and a private copy of its bytes.
///
/// As a record of a file it is the length of the name plus one, the name, a zero byte, the size of
/// the data, the data; both numbers are 32-bit little-endian.
class t_Param {
public:
    /// Copies `size` bytes.
    t_Param(std::string name, const char* data, std::int32_t size);
    t_Param(const t_Param& other);
    t_Param(t_Param&& other) noexcept;
    ~t_Param();
    t_Param& operator=(t_Param other) noexcept;

    const std::string& getName() const;
    std::int32_t getBufferSize() const;
    /// Never null, also when there is no data.
    const char* getInternalBuffer() const;

    /// The record.
    std::string marshall() const;

    /// Takes one record off the front of the bytes; nothing, with the bytes unchanged, when they do
    /// not begin with a whole record. A length is believed only as far as the bytes reach.
    static std::optional<t_Param> unMarshall(std::string_view& bytes);

private:
    std::string m_name;
    std::string m_data;
};
