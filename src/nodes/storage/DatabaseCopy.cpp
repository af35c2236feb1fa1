#include "nodes/storage/DatabaseCopy.h"

#include "nodes/storage/DatabaseDigest.h"
#include "nodes/storage/OpenFiles.h"
#include "nodes/storage/SqliteDatabase.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <thread>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t spareBytes = 4 << 20; // what the copy and its log take besides

std::uint64_t sizeOf(const std::string &file)
{
    std::error_code error;
    const auto size = fs::file_size(file, error);
    return error ? 0 : size;
}

std::string megabytes(std::uint64_t bytes)
{
    return std::to_string((bytes + (1 << 20) - 1) >> 20) + " MB";
}

Result syncFile(const std::string &file)
{
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const bool isSafe = descriptor >= 0 && ::fsync(descriptor) == 0;
    if (descriptor >= 0)
        ::close(descriptor);
    return isSafe ? Result() : Result(Result::StorageError, file + ": cannot be put on the disk");
}

} // namespace

bool DatabaseCopy::step()
{
    if (m_flag && *m_flag)
        m_isCancelled = true;
    return !m_isCancelled;
}

double DatabaseCopy::GetProgress() const
{
    const std::uint64_t size = m_size;
    if (m_phase != Phase::Copying || size == 0)
        return m_phase == Phase::Done ? 1 : 0;
    const std::string aside = m_to + ".part";
    const double written = double(std::max(sizeOf(aside), sizeOf(aside + "-wal")));
    return std::min(1.0, written / double(size));
}

Result DatabaseCopy::checkRoom()
{
    std::error_code error;
    const fs::path directory = fs::absolute(m_to, error).parent_path();
    const fs::space_info space = fs::space(directory, error);
    if (error)
        return Result(Result::StorageError, directory.string() + ": " + error.message());
    // The log of the copy holds it once more until it is carried into the file.
    const std::uint64_t needed = 2 * m_size + spareBytes;
    if (space.available < needed)
        return Result(Result::LimitExceeded, directory.string() + ": not enough room, " +
                                                 megabytes(needed) + " are needed and " +
                                                 megabytes(space.available) + " are free");
    return Result();
}

Result DatabaseCopy::Run()
{
    std::error_code error;
    if (fs::exists(m_to, error))
        return Result(Result::Duplicate, m_to);
    if (!fs::is_regular_file(m_from, error))
        return Result(Result::NotFound, m_from);
    m_size = sizeOf(m_from) + sizeOf(m_from + "-wal");
    const std::string aside = m_to + ".part";
    Result result = checkRoom();
    if (result) {
        fs::remove(aside, error);
        m_phase = Phase::Copying;
        result = copy(aside);
    }
    if (result)
        result = finish(aside);
    if (!result)
        fs::remove(aside, error);
    m_phase = Phase::Done;
    return m_isCancelled && !result ? Result(Result::Cancelled, m_to) : result;
}

Result DatabaseCopy::copy(const std::string &aside)
{
    SqliteDatabase database;
    Result copied = database.Open(m_from, SqliteDatabase::Mode::ReadOnly);
    if (copied)
        copied = copyContent(database, aside);
    const bool isDamaged = !copied && database.IsDamaged();
    database.Close();
    return isDamaged && !OpenFiles().Has(m_from) ? copyBytes(aside) : copied;
}

Result DatabaseCopy::copyContent(SqliteDatabase &database, const std::string &aside)
{
    const auto go = [this] { return step(); };
    Result result = database.Execute("BEGIN; SELECT count(*) FROM sqlite_master");
    if (result)
        result = database.CopyTo(aside, go);
    m_phase = Phase::Verifying;
    if (result)
        result = DatabaseDigest::OfContent(database, go, m_digest);
    (void)database.Execute("ROLLBACK"); // only read
    SqliteDatabase written;
    std::string digest;
    if (result)
        result = written.Open(aside, SqliteDatabase::Mode::ReadOnly);
    if (result)
        result = DatabaseDigest::OfContent(written, go, digest);
    if (result && digest != m_digest)
        result = Result(Result::Failed, m_to + ": what was written reads back as something else");
    return result;
}

Result DatabaseCopy::copyBytes(const std::string &aside)
{
    const auto go = [this] { return step(); };
    std::error_code error;
    m_phase = Phase::Copying;
    fs::copy_file(m_from, aside, fs::copy_options::overwrite_existing, error);
    m_phase = Phase::Verifying;
    Result result =
        error ? Result(Result::StorageError, m_to + ": " + error.message()) : syncFile(aside);
    std::string digest;
    if (result)
        result = DatabaseDigest::OfFile(m_from, go, m_digest);
    if (result)
        result = DatabaseDigest::OfFile(aside, go, digest);
    if (result && digest != m_digest)
        result = Result(Result::Failed, m_to + ": what was written reads back as something else");
    return result;
}

Result DatabaseCopy::finish(const std::string &aside)
{
    std::error_code error;
    for (const char *companion : {"-wal", "-shm"})
        fs::remove(aside + companion, error);
    Result result = syncFile(aside);
    // Nobody's file is replaced that came meanwhile.
    if (result && ::link(aside.c_str(), m_to.c_str()) == 0)
        fs::remove(aside, error);
    else if (result && errno == EEXIST)
        result = Result(Result::Duplicate, m_to);
    else if (result && std::rename(aside.c_str(), m_to.c_str()) != 0)
        result = Result(Result::StorageError, m_to + ": cannot be given its name");
    return result;
}

} // namespace Nodes
