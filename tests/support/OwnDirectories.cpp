#include <QTemporaryDir>

#include <memory>

#include <unistd.h>

namespace {

constexpr const char *marker = "STATION_TEST_DIRECTORIES";

/// Settings, data and unsaved work of a test, and of the programs it starts, live and go with it,
/// however it is run: nothing of the user's is read or left for him to find.
class OwnDirectories
{
public:
    OwnDirectories()
    {
        if (qEnvironmentVariableIsSet(marker))
            return; // those of the test that has started this program
        m_directory = std::make_unique<QTemporaryDir>();
        if (!m_directory->isValid())
            qFatal("no directory for the test: %s", qPrintable(m_directory->errorString()));
        qputenv(marker, m_directory->path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", m_directory->filePath("config").toLocal8Bit());
        qputenv("XDG_DATA_HOME", m_directory->filePath("share").toLocal8Bit());
        qputenv("XDG_STATE_HOME", m_directory->filePath("state").toLocal8Bit());
    }
    ~OwnDirectories()
    {
        if (m_directory)
            m_directory->setAutoRemove(m_owner == ::getpid()); // not by what it has forked
    }
    OwnDirectories(const OwnDirectories &) = delete;
    OwnDirectories &operator=(const OwnDirectories &) = delete;

private:
    const pid_t m_owner = ::getpid();
    std::unique_ptr<QTemporaryDir> m_directory;
};

const OwnDirectories directories;

} // namespace
