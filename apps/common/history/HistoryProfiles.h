#pragma once

#include "apps/common/history/SignalProfile.h"

#include "nodes/values/Result.h"

#include <map>
#include <string>

namespace Host {

struct CsvField;

/// What the signals of one project are like, as a file beside the project tells it: a table
/// `signal,kind,mean,swing,noise,down` with a line for each signal that is not as it would be
/// guessed; `signal` is a name or an id, empty numbers stay as guessed.
class HistoryProfiles
{
public:
    static constexpr const char *FileName = "history.csv";

    /// Of the directory of a project; success without such a file, ParseError names file, line and
    /// column.
    [[nodiscard]] Nodes::Result load(const std::string &directory);
    SignalProfile of(const Nodes::BasicSignal &signal) const;

private:
    struct Row
    {
        std::string kind, mean, swing, noise, down;
    };

    static void apply(const Row &row, SignalProfile &profile);

    std::map<std::string, Row> m_rows; // by name or id
};

} // namespace Host
