#include "t_Param.h"

#include "CallMarker.h"

#include <limits>
#include <utility>

namespace {

void appendNumber(std::string& bytes, std::size_t number)
{
    CallMarker marker("appendNumber");
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>((number >> shift) & 0xFFU);
}

/// Takes a length and as many bytes off the front; nothing when they are not all there.
std::optional<std::string_view> takeBlock(std::string_view& bytes)
{
    CallMarker marker("takeBlock");
    constexpr std::size_t width = 4;
    if (bytes.size() < width)
        return std::nullopt;
    std::uint32_t length = 0;
    for (unsigned i = 0; i < width; ++i)
        length |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    if (length > bytes.size() - width ||
        length > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max()))
        return std::nullopt;
    const std::string_view block = bytes.substr(width, length);
    bytes.remove_prefix(width + length);
    return block;
}

} // namespace

t_Param::t_Param(std::string name, const char* data, std::int32_t size)
    : m_name(std::move(name)), m_data(data, static_cast<std::size_t>(size))
{
    CallMarker marker("t_Param", "t_Param::constructor", true, this);
}

t_Param::t_Param(const t_Param& other) : m_name(other.m_name), m_data(other.m_data)
{
    CallMarker marker("t_Param", "t_Param::constructor", true, this);
}

t_Param::t_Param(t_Param&& other) noexcept
    : m_name(std::move(other.m_name)), m_data(std::move(other.m_data))
{
    CallMarker marker("t_Param", "t_Param::constructor", true, this);
}

t_Param::~t_Param()
{
    CallMarker marker("t_Param", "t_Param::destructor", false, this);
}

t_Param& t_Param::operator=(t_Param other) noexcept
{
    CallMarker marker("t_Param::operator=", this);
    m_name.swap(other.m_name);
    m_data.swap(other.m_data);
    return *this;
}

const std::string& t_Param::getName() const
{
    CallMarker marker("t_Param::getName", this);
    return m_name;
}

std::int32_t t_Param::getBufferSize() const
{
    CallMarker marker("t_Param::getBufferSize", this);
    return static_cast<std::int32_t>(m_data.size());
}

const char* t_Param::getInternalBuffer() const
{
    CallMarker marker("t_Param::getInternalBuffer", this);
    return m_data.data();
}

std::string t_Param::marshall() const
{
    CallMarker marker("t_Param::marshall", this);
    std::string record;
    appendNumber(record, m_name.size() + 1);
    record.append(m_name).push_back('\0');
    appendNumber(record, m_data.size());
    return record + m_data;
}

std::optional<t_Param> t_Param::unMarshall(std::string_view& bytes)
{
    CallMarker marker("t_Param::unMarshall");
    std::string_view rest = bytes;
    auto name = takeBlock(rest);
    if (!name || name->empty() || name->back() != '\0')
        return std::nullopt;
    const auto data = takeBlock(rest);
    if (!data)
        return std::nullopt;
    name->remove_suffix(1);
    bytes = rest;
    return t_Param(std::string(*name), data->data(), static_cast<std::int32_t>(data->size()));
}
