#pragma once

#include <QString>

namespace Nodes {
class Result;
struct HistoryAnswer;
} // namespace Nodes

namespace Widgets::HistoryFaults {

/// What is missing in an answer, in one line for the operator; "" when nothing is.
QString text(const Nodes::HistoryAnswer &answer);
/// Why nothing was asked; "" for success.
QString text(const Nodes::Result &refusal);

} // namespace Widgets::HistoryFaults
