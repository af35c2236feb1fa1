#pragma once

#include "nodes/NodesExport.h"

#include <cstdint>
#include <string>

namespace Nodes {

/// What a file was like at some moment, to notice that somebody else has changed it since. A value;
/// any thread, but reading the file takes as long as its disk does.
class NODES_EXPORT FileStamp
{
public:
    enum enState { Same, Changed, Gone };

    /// Of no file.
    FileStamp() = default;
    static FileStamp Of(const std::string &path);
    /// Of a file whose content is known by its HexDigest, such as one that was just written.
    static FileStamp OfDigest(const std::string &digest);

    bool Exists() const { return m_exists; }
    /// The content in hexadecimal digits; "" of no file.
    const std::string &GetDigest() const { return m_digest; }
    /// Looks at time and size first, at the content only when they differ: a file that was written
    /// anew with the same content is the same.
    enState Compare(const std::string &path) const;

private:
    struct Facts
    {
        bool operator==(const Facts &o) const
        {
            return inode == o.inode && size == o.size && modified == o.modified &&
                   changed == o.changed;
        }
        std::uint64_t inode = 0;
        std::int64_t size = 0;
        std::int64_t modified = 0; // ns
        std::int64_t changed = 0;  // ns
    };

    static bool look(const std::string &path, Facts &facts);

    bool m_exists = false;
    mutable Facts m_facts; // of the last time it was the same; zeros when not looked at yet
    std::string m_digest;
};

} // namespace Nodes
