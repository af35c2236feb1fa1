#include "nodes/project/FileStamp.h"

#include "nodes/project/HexDigest.h"

#include <sys/stat.h>

namespace Nodes {

namespace {

std::int64_t nanoseconds(const timespec &time)
{
    return std::int64_t(time.tv_sec) * 1000000000 + time.tv_nsec;
}

} // namespace

bool FileStamp::look(const std::string &path, Facts &facts)
{
    struct stat found = {};
    if (::stat(path.c_str(), &found) != 0)
        return false;
    facts = {std::uint64_t(found.st_ino), std::int64_t(found.st_size), nanoseconds(found.st_mtim),
             nanoseconds(found.st_ctim)};
    return true;
}

FileStamp FileStamp::Of(const std::string &path)
{
    FileStamp stamp;
    stamp.m_exists = look(path, stamp.m_facts);
    if (stamp.m_exists)
        stamp.m_digest = HexDigestOfFile(path);
    return stamp;
}

FileStamp FileStamp::OfDigest(const std::string &digest)
{
    FileStamp stamp;
    stamp.m_exists = true;
    stamp.m_digest = digest;
    return stamp;
}

FileStamp::enState FileStamp::Compare(const std::string &path) const
{
    Facts facts;
    if (!look(path, facts))
        return m_exists ? Gone : Same;
    if (m_exists && facts == m_facts)
        return Same;
    if (!m_exists || HexDigestOfFile(path) != m_digest)
        return Changed;
    m_facts = facts;
    return Same;
}

} // namespace Nodes
