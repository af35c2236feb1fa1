#include "nodes/storage/postgresql/PostgresLocation.h"

#include <libpq-fe.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string_view>

namespace Nodes {

namespace {

constexpr std::string_view ownOption = "schema=";
constexpr std::size_t longestSchema = 63;

// A server that is gone without a word is noticed within half a minute.
constexpr std::pair<const char *, const char *> defaults[] = {
    {"connect_timeout", "5"},  {"keepalives_idle", "5"},      {"keepalives_interval", "3"},
    {"keepalives_count", "3"}, {"tcp_user_timeout", "15000"}, {"client_encoding", "UTF8"},
};

bool isUri(std::string_view text)
{
    return text.find("://") != std::string_view::npos;
}

/// Takes our option out of those of libpq, which knows its own only.
std::string takeSchema(std::string &text)
{
    const char separator = isUri(text) ? '&' : ' ';
    std::size_t begin = text.find(ownOption);
    while (begin != std::string::npos && begin > 0 && text[begin - 1] != separator &&
           text[begin - 1] != '?' && text[begin - 1] != ':')
        begin = text.find(ownOption, begin + 1);
    if (begin == std::string::npos)
        return {};
    const std::size_t end = std::min(text.find(separator, begin), text.size());
    std::string schema = text.substr(begin + ownOption.size(), end - begin - ownOption.size());
    text.erase(begin, end - begin + (end < text.size() ? 1 : 0));
    return schema;
}

bool isName(const std::string &text)
{
    return text.size() <= longestSchema &&
           text.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_") == std::string::npos &&
           text.find_first_of("0123456789") != 0 && text.rfind("pg_", 0) != 0;
}

std::string quoted(const std::string &value)
{
    std::string text = "'";
    for (const char c : value) {
        if (c == '\'' || c == '\\')
            text += '\\';
        text += c;
    }
    return text + "'";
}

} // namespace

PostgresLocation::PostgresLocation(const std::string &location, std::string defaultSchema)
    : m_defaultSchema(std::move(defaultSchema))
{
    std::string text = location;
    const std::string schema = takeSchema(text);
    m_schema = schema.empty() ? m_defaultSchema : schema;
    if (!isUri(text))
        text.erase(0, text.find(':') + 1);
    parse(text);
    show();
    if (m_result && !isName(m_schema))
        m_result = Result(Result::InvalidArgument,
                          m_shown + ": the name of the schema may have small letters, digits and "
                                    "underscores only");
}

bool PostgresLocation::IsOne(const std::string &location)
{
    return std::any_of(std::begin(Schemes), std::end(Schemes), [&](const char *scheme) {
        return location.rfind(std::string(scheme) + ":", 0) == 0;
    });
}

void PostgresLocation::parse(const std::string &text)
{
    char *error = nullptr;
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> parsed(
        PQconninfoParse(text.c_str(), &error), &PQconninfoFree);
    // What libpq says of a text that it cannot read quotes parts of it, maybe the password.
    PQfreemem(error);
    if (!parsed) {
        m_result =
            Result(Result::InvalidArgument, "the location is no connection string of PostgreSQL: "
                                            "postgresql://user@host:port/database or "
                                            "postgresql:host=... dbname=... user=... is wanted");
        return;
    }
    for (const PQconninfoOption *option = parsed.get(); option->keyword; ++option) {
        if (option->val)
            m_options.emplace_back(option->keyword, option->val);
    }
}

const std::string *PostgresLocation::find(const std::string &option) const
{
    const auto found = std::find_if(m_options.begin(), m_options.end(),
                                    [&](const auto &known) { return known.first == option; });
    return found == m_options.end() ? nullptr : &found->second;
}

void PostgresLocation::show()
{
    const auto value = [this](const char *option, const char *before) {
        const std::string *const found = find(option);
        return found ? before + *found : std::string();
    };
    m_shown = std::string(Schemes[0]) + "://";
    if (const std::string *user = find("user"))
        m_shown += *user + "@";
    m_shown += value("host", "") + value("port", ":") + value("dbname", "/");
    if (const std::string *service = find("service"))
        m_shown += "?service=" + *service;
    if (m_schema != m_defaultSchema)
        m_shown += (find("service") ? "&schema=" : "?schema=") + m_schema;
}

std::string PostgresLocation::ConnectionString() const
{
    std::string text;
    for (const auto &[option, value] : m_options)
        text += option + "=" + quoted(value) + " ";
    for (const auto &[option, value] : defaults) {
        if (!find(option))
            text += std::string(option) + "=" + value + " ";
    }
    return text;
}

} // namespace Nodes
