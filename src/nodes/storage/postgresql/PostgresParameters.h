#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

/// Values for $1, $2, … of a statement, in their order.
class PostgresParameters
{
public:
    PostgresParameters &Add(std::int64_t value);
    /// What is no UTF-8 and what PostgreSQL keeps in no text becomes '?'.
    PostgresParameters &Add(std::string_view text);
    PostgresParameters &AddBytes(std::string_view bytes);

    /// Columns of many rows: an array each, for unnest().
    struct Integers
    {
        std::string text;
        void Add(std::int64_t value);
    };
    struct ByteStrings
    {
        std::string text;
        void Add(std::string_view bytes);
    };
    PostgresParameters &Add(const Integers &column);
    PostgresParameters &Add(const ByteStrings &column);

    const std::vector<std::string> &GetTexts() const { return m_texts; }

private:
    std::vector<std::string> m_texts;
};

} // namespace Nodes
