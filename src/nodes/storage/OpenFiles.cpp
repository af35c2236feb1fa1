#include "nodes/storage/OpenFiles.h"

#include <sys/stat.h>

#include <filesystem>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

template <class Take> void visitOpen(const fs::path &process, Take take)
{
    std::error_code error;
    for (fs::directory_iterator fd(process / "fd", error), end; !error && fd != end;
         fd.increment(error)) {
        struct stat status;
        if (::stat(fd->path().c_str(), &status) == 0 && S_ISREG(status.st_mode))
            take(status);
    }
}

} // namespace

OpenFiles::OpenFiles()
{
    std::error_code error;
    for (fs::directory_iterator process("/proc", error), end; !error && process != end;
         process.increment(error)) {
        const std::string name = process->path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            visitOpen(process->path(), [this](const struct stat &status) {
                m_files.emplace(status.st_dev, status.st_ino);
            });
    }
}

bool OpenFiles::Has(const std::string &file) const
{
    struct stat status;
    return ::stat(file.c_str(), &status) == 0 && m_files.count({status.st_dev, status.st_ino}) != 0;
}

} // namespace Nodes
