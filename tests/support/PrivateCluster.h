#pragma once

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

/// A PostgreSQL server of one test's own: in a temporary directory, on a free port of the loopback
/// address. It does not outlive the test, whatever becomes of that. As root the server runs as the
/// user "postgres", who comes with Debian's package. Failures throw std::runtime_error.
class PrivateCluster
{
public:
    /// Directory of the server's programs, the newest; "" when there is no server.
    static std::string Programs()
    {
        std::string found;
        std::error_code ignored;
        for (const auto &entry :
             std::filesystem::directory_iterator("/usr/lib/postgresql", ignored)) {
            const std::string bin = entry.path().string() + "/bin";
            if (std::filesystem::exists(bin + "/initdb"))
                found = std::max(found, bin);
        }
        return found;
    }

    /// `isDurable`: the server waits for the disk, as in production.
    explicit PrivateCluster(bool isDurable = false)
    {
        std::string name = (std::filesystem::temp_directory_path() / "cluster-XXXXXX").string();
        if (!::mkdtemp(name.data()))
            throw std::runtime_error("cluster: no temporary directory");
        m_directory = name;
        if (const passwd *user = ::geteuid() == 0 ? ::getpwnam("postgres") : nullptr)
            (void)!::chown(name.c_str(), user->pw_uid, user->pw_gid);
        run({Programs() + "/initdb", "--pgdata=" + m_directory + "/data", "--username=postgres",
             "--auth=trust", "--encoding=UTF8", "--locale=C", "--no-sync"});
        std::ofstream(m_directory + "/data/postgresql.conf", std::ios::app)
            << "listen_addresses = '127.0.0.1'\nunix_socket_directories = '" << m_directory
            << "'\nshared_buffers = 128MB\nmax_connections = 20\n"
            << (isDurable ? "" : "fsync = off\nfull_page_writes = off\n");
        std::ofstream(m_directory + "/data/pg_hba.conf")
            << "local all all trust\nhost all postgres 127.0.0.1/32 trust\n"
               "host all all 127.0.0.1/32 scram-sha-256\n";
        m_port = freePort();
        Start();
    }
    ~PrivateCluster()
    {
        Kill();
        std::error_code ignored;
        std::filesystem::remove_all(m_directory, ignored);
    }
    PrivateCluster(const PrivateCluster &) = delete;
    PrivateCluster &operator=(const PrivateCluster &) = delete;

    void Start()
    {
        for (int i = 0; i < 100; ++i) {
            if (::pipe2(m_life, O_CLOEXEC) != 0)
                break;
            // The server ends with this process, which alone holds the other end of the pipe.
            m_shell =
                spawn({"sh", "-c",
                       "\"$@\" & server=$!; { read end; kill -QUIT $server; } <&3 & wait $server",
                       "sh", Programs() + "/postgres", "-D", m_directory + "/data", "-p", Port()},
                      m_life[0]);
            ::close(m_life[0]);
            if (isReady()) {
                std::ifstream(m_directory + "/data/postmaster.pid") >> m_server;
                return;
            }
            ::close(m_life[1]); // what a killed server left is still going away
        }
        throw std::runtime_error("cluster: does not start, see " + m_directory + "/log");
    }
    /// Ends every connection and what is under way on it.
    void Stop() { end(SIGINT); }
    /// As a loss of power would.
    void Kill() { end(SIGKILL); }
    void Restart()
    {
        Stop();
        Start();
    }
    /// It takes connections and answers nothing, or goes on.
    void Freeze(bool isFrozen) const
    {
        const int signal = isFrozen ? SIGSTOP : SIGCONT;
        ::kill(m_server, signal);
        for (const auto &entry : std::filesystem::directory_iterator("/proc")) {
            std::ifstream stat(entry.path() / "stat");
            std::string pid, name, state, parent;
            if (stat >> pid >> name >> state >> parent && parent == std::to_string(m_server))
                ::kill(std::stoi(pid), signal);
        }
    }
    void Sql(const std::string &sql, const std::string &database = "postgres") const
    {
        run({Programs() + "/psql", "--quiet", "--no-psqlrc", "--set=ON_ERROR_STOP=1",
             "--host=" + m_directory, "--port=" + Port(), "--username=postgres",
             "--dbname=" + database, "--command=" + sql});
    }

    std::string Port() const { return std::to_string(m_port); }
    /// Of a database that is made when it is not there; the server's own user.
    std::string Location(const std::string &database = "postgres")
    {
        if (database != "postgres" &&
            std::find(m_databases.begin(), m_databases.end(), database) == m_databases.end()) {
            Sql("CREATE DATABASE " + database);
            m_databases.push_back(database);
        }
        return "postgresql://postgres@127.0.0.1:" + Port() + "/" + database;
    }
    const std::string &Directory() const { return m_directory; }

private:
    static int freePort()
    {
        const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        const bool isBound = ::bind(socket, reinterpret_cast<sockaddr *>(&address), size) == 0;
        ::getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size);
        ::close(socket);
        if (!isBound)
            throw std::runtime_error("cluster: no free port");
        return ntohs(address.sin_port);
    }

    pid_t spawn(std::vector<std::string> words, int life = -1) const
    {
        std::vector<std::string> line;
        if (::geteuid() == 0)
            line = {"setpriv", "--reuid=postgres", "--regid=postgres", "--clear-groups"};
        line.insert(line.end(), words.begin(), words.end());
        std::vector<char *> arguments;
        for (std::string &word : line)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        const std::string log = m_directory + "/log";
        const pid_t child = ::fork();
        if (child != 0)
            return child;
        const int output = ::open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
        ::dup2(output, 1);
        ::dup2(output, 2);
        if (life >= 0)
            ::dup2(life, 3);
        ::setenv("LC_ALL", "C", 1);
        ::execvp(arguments[0], arguments.data());
        ::_exit(127);
    }
    void run(std::vector<std::string> words) const
    {
        const std::string what = words.front() + " " + words.back();
        int status = 0;
        if (::waitpid(spawn(std::move(words)), &status, 0) < 0 || status != 0)
            throw std::runtime_error("cluster: " + what + " failed, see " + m_directory + "/log");
    }
    bool isReady() const
    {
        for (int i = 0; i < 500 && ::waitpid(m_shell, nullptr, WNOHANG) == 0; ++i) {
            int status = 0;
            ::waitpid(spawn({Programs() + "/pg_isready", "--quiet", "--host=" + m_directory,
                             "--port=" + Port()}),
                      &status, 0);
            if (status == 0)
                return true;
            ::usleep(20000);
        }
        return false;
    }
    void end(int signal)
    {
        if (m_server <= 0)
            return;
        Freeze(false);
        ::kill(m_server, signal);
        ::waitpid(m_shell, nullptr, 0);
        ::close(m_life[1]);
        m_server = 0;
    }

    std::string m_directory;
    std::vector<std::string> m_databases;
    int m_port = 0;
    int m_life[2] = {-1, -1}; // a pipe
    pid_t m_shell = 0;        // the server's parent
    pid_t m_server = 0;
};
