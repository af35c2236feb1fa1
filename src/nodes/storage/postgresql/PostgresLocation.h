#pragma once

#include "nodes/values/Result.h"

#include <string>
#include <utility>
#include <vector>

namespace Nodes {

/// Where something of ours is in PostgreSQL: what libpq understands, as
/// "postgresql://user@host:port/base" or "postgresql:host=… dbname=…", and one option of our own:
/// "schema", small letters, digits and underscores, by default named after what it holds. A value;
/// any thread.
class PostgresLocation
{
public:
    /// What locations of this kind begin with, before the colon.
    static constexpr const char *Schemes[] = {"postgresql", "postgres"};

    PostgresLocation(const std::string &location, std::string defaultSchema);

    /// Whether a location is of this kind.
    static bool IsOne(const std::string &location);

    /// InvalidArgument when it cannot be understood.
    const Result &GetResult() const { return m_result; }
    /// For people: without a password or anything else that is secret.
    const std::string &GetShown() const { return m_shown; }
    const std::string &GetSchema() const { return m_schema; }
    /// For libpq: with the secrets, and with limits of time where the location has none.
    std::string ConnectionString() const;

private:
    using Options = std::vector<std::pair<std::string, std::string>>;

    void parse(const std::string &text);
    void show();
    const std::string *find(const std::string &option) const;

    std::string m_defaultSchema;
    Options m_options;
    std::string m_schema;
    std::string m_shown;
    Result m_result;
};

} // namespace Nodes
