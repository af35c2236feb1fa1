#include "nodes/storage/PrivateDirectory.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace Nodes {

namespace {

Result checkOne(const std::string &path)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        return {errno == ENOENT ? Result::NotFound : Result::StorageError,
                path + ": " + std::strerror(errno)};
    const bool isOwn = S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
                       (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
    return isOwn ? Result()
                 : Result(Result::Refused, path + ": not a directory of this user alone");
}

} // namespace

Result PrivateDirectory::Check(const std::string &path)
{
    // Who owns the one above could put another one in its place.
    const Result above = checkOne(std::filesystem::path(path).parent_path().string());
    return above ? checkOne(path) : above;
}

Result PrivateDirectory::Make(const std::string &path)
{
    const std::filesystem::path above = std::filesystem::path(path).parent_path();
    std::error_code ignored; // shows when the next one is made
    std::filesystem::create_directories(above.parent_path(), ignored);
    for (const std::string &part : {above.string(), path}) {
        if (::mkdir(part.c_str(), S_IRWXU) != 0 && errno != EEXIST)
            return {Result::StorageError, part + ": " + std::strerror(errno)};
    }
    return Check(path);
}

} // namespace Nodes
