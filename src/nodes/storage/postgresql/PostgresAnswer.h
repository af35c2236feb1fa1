#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace Nodes {

/// Rows that a statement gave. A value that is shared cheaply; rows and columns count from 0.
class PostgresAnswer
{
public:
    struct State;

    PostgresAnswer() = default;
    explicit PostgresAnswer(std::shared_ptr<const State> state) : m_state(std::move(state)) {}

    int Size() const;
    bool IsEmpty() const { return Size() == 0; }
    bool IsNull(int row, int column) const;
    /// 0 for NULL; of a boolean 1 or 0.
    std::int64_t Integer(int row, int column) const;
    /// "" for NULL; valid as long as the answer.
    std::string_view Text(int row, int column) const;
    /// Of a bytea.
    std::string Bytes(int row, int column) const;

private:
    std::shared_ptr<const State> m_state;
};

} // namespace Nodes
