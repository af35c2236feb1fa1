#pragma once

#include "nodes/storage/postgresql/PostgresAnswer.h"
#include "nodes/storage/postgresql/PostgresLocation.h"
#include "nodes/storage/postgresql/PostgresParameters.h"
#include "nodes/values/Result.h"

#include <functional>
#include <memory>
#include <string>

namespace Nodes {

/// One connection to a server, which counts as closed once it is lost; nothing connects again by
/// itself. Every call ends within some ten seconds, whatever the server does: a statement that
/// takes too long is ended by the server, and where that does not answer the connection is cut.
/// One thread at a time.
class PostgresConnection
{
public:
    enum class Mode {
        ReadOnly,
        ReadWrite ///< what was committed survives a loss of power, as far as the server can tell
    };

    /// `name` is what the server's administrator sees.
    PostgresConnection(PostgresLocation location, std::string name);
    ~PostgresConnection();
    PostgresConnection(const PostgresConnection &) = delete;
    PostgresConnection &operator=(const PostgresConnection &) = delete;

    [[nodiscard]] Result Open(Mode mode);
    void Close();
    bool IsOpen() const { return m_session != nullptr; }
    const PostgresLocation &GetLocation() const { return m_location; }

    /// Statements without parameters; what the last one gives.
    [[nodiscard]] Result Execute(const std::string &sql, PostgresAnswer *answer = nullptr);
    /// One statement, which is prepared when it is met first.
    [[nodiscard]] Result Query(const std::string &sql, const PostgresParameters &parameters,
                               PostgresAnswer &answer);
    [[nodiscard]] Result Query(const std::string &sql, const PostgresParameters &parameters);
    /// Runs `work` as one transaction: all or nothing. `begin` starts it; the work gets what its
    /// last statement gives.
    using Work = std::function<Result(const PostgresAnswer &begun)>;
    [[nodiscard]] Result Transact(const std::string &begin, const Work &work);
    /// Whether the server has closed the connection, which then counts as closed. Asks nobody.
    bool NoticeEnd();

    /// Five characters of SQLSTATE, of the last failure; "" when the connection was lost.
    const std::string &GetState() const { return m_state; }

private:
    struct Session;

    [[nodiscard]] Result connect();
    [[nodiscard]] Result set(Mode mode);
    [[nodiscard]] Result run(const std::function<void(Session &)> &work);
    Result failure(const std::string &cause) const;

    const PostgresLocation m_location;
    const std::string m_name;
    std::string m_state;
    std::unique_ptr<Session> m_session;
};

} // namespace Nodes
