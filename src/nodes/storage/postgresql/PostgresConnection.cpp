#include "nodes/storage/postgresql/PostgresConnection.h"

#include "nodes/storage/postgresql/PostgresWatch.h"

#include <pqxx/connection>
#include <pqxx/errorhandler>
#include <pqxx/except>
#include <pqxx/nontransaction>
#include <pqxx/result>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <map>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace Nodes {

namespace {

constexpr PostgresWatch::Limit longestGrace(5000); // for the server to end a statement itself

/// What the location or the server's administrator has set to something stays.
constexpr const char *settings = R"(
SELECT set_config(name, value, false) FROM (VALUES
    ('statement_timeout', '0', '15s'), ('lock_timeout', '0', '5s'),
    ('idle_in_transaction_session_timeout', '0', '60s'),
    ('tcp_keepalives_idle', '7200', '10'), ('tcp_keepalives_interval', '75', '5'),
    ('tcp_keepalives_count', '9', '3'), ('client_min_messages', 'notice', 'error'))
    AS wanted (name, plain, value)
WHERE current_setting(name) IN (plain, '0');
SELECT setting::bigint, current_setting('server_encoding') FROM pg_settings
WHERE name = 'statement_timeout')";

constexpr const char *durability = "SELECT set_config('synchronous_commit', 'on', false) "
                                   "WHERE current_setting('synchronous_commit') = 'off'";

/// The first line, without the word that every one begins with.
std::string causeOf(const std::string &text)
{
    const std::size_t begin = text.find_first_not_of(' ', text.rfind("ERROR:", 0) == 0   ? 6
                                                          : text.rfind("FATAL:", 0) == 0 ? 6
                                                                                         : 0);
    return begin == std::string::npos ? text : text.substr(begin, text.find('\n', begin) - begin);
}

int digitOf(char c)
{
    return c <= '9' ? c - '0' : c - 'a' + 10;
}

} // namespace

struct PostgresAnswer::State
{
    pqxx::result rows;
};

int PostgresAnswer::Size() const
{
    return m_state ? static_cast<int>(m_state->rows.size()) : 0;
}

bool PostgresAnswer::IsNull(int row, int column) const
{
    return m_state->rows[row][column].is_null();
}

std::string_view PostgresAnswer::Text(int row, int column) const
{
    const pqxx::field field = m_state->rows[row][column];
    return {field.c_str(), field.size()};
}

std::int64_t PostgresAnswer::Integer(int row, int column) const
{
    const pqxx::field field = m_state->rows[row][column];
    const char *const text = field.c_str();
    return text[0] == 't' ? 1 : std::strtoll(text, nullptr, 10);
}

std::string PostgresAnswer::Bytes(int row, int column) const
{
    const std::string_view text = Text(row, column);
    std::string bytes(text.size() < 2 ? 0 : text.size() / 2 - 1, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(digitOf(text[2 * i + 2]) << 4 | digitOf(text[2 * i + 3]));
    return bytes;
}

struct PostgresConnection::Session
{
    explicit Session(const std::string &options) : connection(options), work(connection)
    {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
        // What it connected to by itself would lack locks and settings.
        connection.inhibit_reactivation(true);
#pragma GCC diagnostic pop
        socket = ::fcntl(connection.sock(), F_DUPFD_CLOEXEC, 0);
    }
    ~Session()
    {
        if (socket >= 0)
            ::close(socket);
    }

    pqxx::connection connection;
    const pqxx::quiet_errorhandler handler{connection}; // what matters comes as an exception
    pqxx::nontransaction work;
    int socket = -1; // our own descriptor: it is no other's as long as the session lives
    std::map<std::string, std::string> prepared; // names by their SQL
    const std::shared_ptr<PostgresWatch> watch = PostgresWatch::Shared();
    PostgresWatch::Limit limit{20000};
};

PostgresConnection::PostgresConnection(PostgresLocation location, std::string name)
    : m_location(std::move(location)), m_name(std::move(name))
{
}

PostgresConnection::~PostgresConnection() = default;

void PostgresConnection::Close()
{
    m_session.reset();
}

Result PostgresConnection::failure(const std::string &cause) const
{
    return Result(Result::StorageError, m_location.GetShown() + ": " + causeOf(cause));
}

Result PostgresConnection::Open(Mode mode)
{
    Close();
    if (!m_location.GetResult())
        return m_location.GetResult();
    Result result = connect();
    if (result)
        result = set(mode);
    if (!result)
        Close();
    return result;
}

Result PostgresConnection::connect()
{
    m_state.clear();
    try {
        m_session = std::make_unique<Session>(m_location.ConnectionString() + "application_name='" +
                                              m_name + "'");
    } catch (const std::exception &error) {
        return failure(error.what());
    }
    return Result();
}

Result PostgresConnection::set(Mode mode)
{
    PostgresAnswer found;
    Result result = Execute(settings, &found);
    if (!result)
        return result;
    if (found.Text(0, 1) != "UTF8")
        return failure("the encoding of the database is " + std::string(found.Text(0, 1)) +
                       ", UTF8 is wanted: create one with ENCODING 'UTF8' TEMPLATE template0");
    const PostgresWatch::Limit timeout(found.Integer(0, 0));
    m_session->limit = timeout + std::min(timeout, longestGrace);
    // Plain names are ours, whatever else is in the database.
    result = Execute("SET search_path = \"" + m_location.GetSchema() + "\"");
    if (!result)
        return result;
    return Execute(mode == Mode::ReadWrite ? durability : "SET default_transaction_read_only = on");
}

Result PostgresConnection::run(const std::function<void(Session &)> &work)
{
    if (!m_session)
        return failure("not connected");
    std::string cause;
    m_state.clear();
    try {
        const PostgresWatch::Wait wait(*m_session->watch, m_session->socket, m_session->limit);
        work(*m_session);
        return Result();
    } catch (const pqxx::sql_error &error) {
        cause = error.what();
        m_state = error.sqlstate();
    } catch (const std::exception &error) {
        cause = error.what();
    }
    const bool isEnded = m_state.rfind("57P", 0) == 0; // the server ends the session
    if (isEnded || m_state.empty() || !m_session->connection.is_open())
        Close();
    return failure(cause);
}

Result PostgresConnection::Execute(const std::string &sql, PostgresAnswer *answer)
{
    return run([&](Session &session) {
        pqxx::result rows = session.work.exec(sql);
        if (answer)
            *answer = PostgresAnswer(
                std::make_shared<PostgresAnswer::State>(PostgresAnswer::State{std::move(rows)}));
    });
}

Result PostgresConnection::Query(const std::string &sql, const PostgresParameters &parameters,
                                 PostgresAnswer &answer)
{
    return run([&](Session &session) {
        std::string &name = session.prepared[sql];
        if (name.empty()) {
            name = "s" + std::to_string(session.prepared.size());
            session.connection.prepare(name, sql);
        }
        pqxx::result rows = session.work.exec_prepared(
            name, pqxx::prepare::make_dynamic_params(parameters.GetTexts()));
        answer = PostgresAnswer(
            std::make_shared<PostgresAnswer::State>(PostgresAnswer::State{std::move(rows)}));
    });
}

Result PostgresConnection::Query(const std::string &sql, const PostgresParameters &parameters)
{
    PostgresAnswer ignored;
    return Query(sql, parameters, ignored);
}

bool PostgresConnection::NoticeEnd()
{
    if (!m_session)
        return false;
    pollfd socket{m_session->socket, POLLRDHUP, 0};
    if (::poll(&socket, 1, 0) == 0)
        return false;
    Close();
    return true;
}

Result PostgresConnection::Transact(const std::string &begin, const Work &work)
{
    PostgresAnswer begun;
    Result result = Execute(begin, &begun);
    if (result)
        result = work(begun);
    if (result)
        result = Execute("COMMIT");
    if (result || !IsOpen())
        return result;
    const std::string state = m_state; // of the failure, if it was one of the server's
    // A server that cannot even take back has nothing to say to us.
    if (!Execute("ROLLBACK"))
        Close();
    m_state = state;
    return result;
}

} // namespace Nodes
