#include "apps/station/DataDirectory.h"

#include "apps/station/ProcessLock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <thread>

#include <unistd.h>

namespace Station {

namespace {

Nodes::Result failure(Nodes::Result::ResultType type, const QString &text)
{
    return {type, text.toStdString()};
}

constexpr std::chrono::seconds lookPeriod(1);
constexpr std::int64_t patience = 3000; // ms

/// Steady, ms; never 0.
std::int64_t now()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
               .count() +
           1;
}

} // namespace

QString fileNameFrom(const QString &name)
{
    QString result = name;
    for (QChar &character : result) {
        if (!character.isLetterOrNumber() && character != '-' && character != '_')
            character = '_';
    }
    return result.isEmpty() ? QStringLiteral("unnamed") : result;
}

struct DataDirectory::Watch
{
    explicit Watch(std::string directory) : path(std::move(directory)) {}

    void look()
    {
        began = now();
        Nodes::Result held;
        if (!lock.isStillThere()) {
            std::error_code ignored;
            std::filesystem::create_directories(path, ignored);
            held = lock.take(path);
        } else if (::access(path.c_str(), W_OK) != 0) {
            held = Nodes::Result(Nodes::Result::StorageError,
                                 "cannot be written: " + std::string(std::strerror(errno)));
        }
        began = 0;
        const std::lock_guard guard(mutex);
        trouble = held ? std::string() : held.GetDetail();
    }

    static void run(const std::shared_ptr<Watch> &watch)
    {
        std::unique_lock guard(watch->mutex);
        while (!watch->isStopping) {
            guard.unlock();
            {
                const std::lock_guard disk(watch->diskMutex);
                watch->look();
            }
            guard.lock();
            watch->stopped.wait_for(guard, lookPeriod, [&] { return watch->isStopping; });
        }
    }

    const std::string path;
    std::timed_mutex diskMutex; // of the lock; held while the disk is asked
    ProcessLock lock;
    std::atomic<std::int64_t> began{0}; // when the disk was asked, 0 once it has answered
    std::mutex mutex;                   // of the rest
    std::condition_variable stopped;
    std::string trouble;
    bool isStopping = false;
};

DataDirectory::DataDirectory() = default;

DataDirectory::~DataDirectory()
{
    if (!m_watch)
        return;
    {
        const std::lock_guard guard(m_watch->mutex);
        m_watch->isStopping = true;
    }
    m_watch->stopped.notify_all();
    // A disk that hangs keeps the lock until the process is gone.
    const std::unique_lock disk(m_watch->diskMutex, std::chrono::seconds(1));
    if (disk.owns_lock())
        m_watch->lock.release();
}

QString DataDirectory::defaultPath(const QString &projectName)
{
    const QDir base(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    return base.filePath(QStringLiteral("operator-station/") + fileNameFrom(projectName));
}

Nodes::Result DataDirectory::open(const QString &path)
{
    m_path = QDir(path).absolutePath();
    if (!QDir().mkpath(m_path))
        return failure(Nodes::Result::StorageError,
                       QStringLiteral("cannot create the data directory \"%1\"; name another one "
                                      "with --data")
                           .arg(m_path));
    const auto watch = std::make_shared<Watch>(QFile::encodeName(m_path).toStdString());
    const Nodes::Result taken = watch->lock.take(watch->path);
    if (!taken)
        return taken;
    m_watch = watch;
    std::thread([watch] { Watch::run(watch); }).detach();
    return taken;
}

std::vector<std::string> DataDirectory::fallbacks(const std::string &base) const
{
    const QByteArray path = QFile::encodeName(m_path);
    const QByteArray name = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
    const std::string own =
        "/operator-station-" + std::to_string(::geteuid()) + "/" + name.left(16).toStdString();
    if (!base.empty())
        return {base + own};
    return {"/var/tmp" + own, "/dev/shm" + own};
}

std::string DataDirectory::trouble() const
{
    if (!m_watch)
        return {};
    const std::int64_t began = m_watch->began;
    if (began != 0 && now() - began > patience)
        return "does not answer for " + std::to_string((now() - began) / 1000) + " s";
    const std::lock_guard guard(m_watch->mutex);
    return m_watch->trouble;
}

Nodes::Result DataDirectory::openTemporary()
{
    m_temporary = std::make_unique<QTemporaryDir>();
    if (!m_temporary->isValid())
        return failure(Nodes::Result::StorageError,
                       QStringLiteral("cannot create a temporary directory: %1")
                           .arg(m_temporary->errorString()));
    return open(m_temporary->path());
}

} // namespace Station
