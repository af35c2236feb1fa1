#include "nodes/model/links/ResourceLink.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t maximumSize = 64u << 20;

struct CachedFile
{
    fs::file_time_type changed;
    std::weak_ptr<const std::string> bytes;
};

struct ResourceStore
{
    std::mutex mutex;
    std::string baseDirectory = ".";
    std::map<std::string, CachedFile> files;
};

ResourceStore &store()
{
    static ResourceStore instance;
    return instance;
}

std::shared_ptr<const std::string> readFile(const std::string &path)
{
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size > maximumSize)
        return nullptr;
    std::ifstream file(path, std::ios::binary);
    auto bytes = std::make_shared<std::string>(static_cast<std::size_t>(size), '\0');
    if (!file.read(bytes->data(), static_cast<std::streamsize>(size)))
        return nullptr;
    return bytes;
}

bool leavesDirectory(const fs::path &relative)
{
    return relative.is_absolute() || relative.begin() == relative.end() ||
           *relative.begin() == "..";
}

/// Whether the file is, or would be, in the directory once every symbolic link is followed.
bool staysInside(const fs::path &directory, const fs::path &file)
{
    std::error_code error;
    const fs::path base = fs::weakly_canonical(fs::absolute(directory, error), error);
    if (error)
        return false;
    const fs::path real = fs::weakly_canonical(base / file, error);
    return !error && !leavesDirectory(real.lexically_relative(base));
}

} // namespace

void ResourceLink::SetBaseDirectory(const std::string &directory)
{
    ResourceStore &resources = store();
    const std::lock_guard lock(resources.mutex);
    resources.baseDirectory = directory;
}

std::string ResourceLink::GetBaseDirectory()
{
    ResourceStore &resources = store();
    const std::lock_guard lock(resources.mutex);
    return resources.baseDirectory;
}

std::string ResourceLink::GetFullFilePath() const
{
    const fs::path relative = fs::path(m_filePath).lexically_normal();
    const fs::path base = GetBaseDirectory();
    if (m_filePath.empty() || leavesDirectory(relative) || !staysInside(base, relative))
        return {};
    return (base / relative).string();
}

ResourcePtr ResourceLink::Load() const
{
    const std::string path = GetFullFilePath();
    std::error_code error;
    const fs::file_time_type changed = fs::last_write_time(path, error);
    if (path.empty() || error)
        return {};

    ResourceStore &resources = store();
    const std::lock_guard lock(resources.mutex);
    CachedFile &file = resources.files[path];
    auto bytes = file.changed == changed ? file.bytes.lock() : nullptr;
    if (!bytes) {
        bytes = readFile(path);
        file = {changed, bytes};
    }
    return ResourcePtr(bytes);
}

} // namespace Nodes
