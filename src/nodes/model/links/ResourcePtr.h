#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace Nodes {

/// Shared, immutable bytes of a project file. Equal when both point to the same loaded file.
class ResourcePtr
{
public:
    ResourcePtr() = default;
    explicit ResourcePtr(std::shared_ptr<const std::string> bytes) : m_bytes(std::move(bytes)) {}

    const char *GetData() const { return m_bytes ? m_bytes->data() : nullptr; }
    std::size_t GetSize() const { return m_bytes ? m_bytes->size() : 0; }
    explicit operator bool() const { return GetSize() > 0; }
    bool operator==(const ResourcePtr &other) const { return m_bytes == other.m_bytes; }
    bool operator!=(const ResourcePtr &other) const { return !(*this == other); }

private:
    std::shared_ptr<const std::string> m_bytes;
};

} // namespace Nodes
