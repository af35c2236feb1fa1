#include "apps/common/history/HistoryProfiles.h"

#include "apps/common/history/CsvReader.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <limits>
#include <optional>

#include <fcntl.h>
#include <unistd.h>

namespace Host {

namespace {

using Nodes::Result;
using Kind = SignalProfile::Kind;

constexpr std::size_t columns = 6;
constexpr const char *header = "signal,kind,mean,swing,noise,down";
constexpr std::array<std::pair<const char *, Kind>, 6> kinds{{{"process", Kind::Process},
                                                              {"setpoint", Kind::Setpoint},
                                                              {"state", Kind::State},
                                                              {"duty", Kind::Duty},
                                                              {"counter", Kind::Counter},
                                                              {"constant", Kind::Constant}}};

std::optional<Kind> kindOf(const std::string &name)
{
    for (const auto &[known, kind] : kinds) {
        if (name == known)
            return kind;
    }
    return std::nullopt;
}

void takeNumber(const std::string &text, double &number)
{
    number = Nodes::ParseDouble(text).value_or(number);
}

/// What is wrong with a row of a table, "" when nothing is; `column` is that of its field.
std::string faultIn(const std::vector<CsvField> &fields, bool isHeader, std::size_t &column)
{
    column = fields.front().column;
    if (fields.size() != columns || (isHeader && fields[1].text != "kind"))
        return std::string("a line has the fields ") + header;
    if (isHeader)
        return {};
    column = fields[1].column;
    if (!fields[1].text.empty() && !kindOf(fields[1].text))
        return "\"" + fields[1].text +
               "\" is no kind: give process, setpoint, state, duty, counter or constant";
    for (std::size_t i = 2; i < columns; ++i) {
        column = fields[i].column;
        const bool isText = i == 2 && fields[i].isQuoted; // of a signal that has texts
        if (!fields[i].text.empty() && !isText && !Nodes::ParseDouble(fields[i].text))
            return "\"" + fields[i].text + "\" is no number";
    }
    return {};
}

} // namespace

Result HistoryProfiles::load(const std::string &directory)
{
    const std::string file = directory + "/" + FileName;
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return errno == ENOENT ? Result()
                               : Result(Result::StorageError, file + ": " + std::strerror(errno));
    CsvReader reader(descriptor);
    Result result;
    bool isHeader = true;
    for (auto step = reader.next(); step != CsvReader::Step::End && result; step = reader.next()) {
        std::size_t column = reader.faultColumn();
        const std::string fault = step == CsvReader::Step::Record
                                      ? faultIn(reader.fields(), isHeader, column)
                                  : step == CsvReader::Step::Fault ? reader.fault()
                                                                   : std::strerror(reader.error());
        if (!fault.empty())
            result = Result(Result::ParseError, file + ":" + std::to_string(reader.line()) + ":" +
                                                    std::to_string(column) + ": " + fault);
        else if (!isHeader)
            m_rows[reader.fields()[0].text] = {reader.fields()[1].text, reader.fields()[2].text,
                                               reader.fields()[3].text, reader.fields()[4].text,
                                               reader.fields()[5].text};
        isHeader = false;
    }
    ::close(descriptor);
    return result;
}

void HistoryProfiles::apply(const Row &row, SignalProfile &profile)
{
    profile.kind = kindOf(row.kind).value_or(profile.kind);
    if (profile.isText && !row.mean.empty())
        profile.text = row.mean;
    else
        takeNumber(row.mean, profile.mean);
    // Whoever knows the mean knows better than the range: a plant may be run beyond it.
    if (!profile.isLogical && !row.mean.empty()) {
        profile.least = -std::numeric_limits<double>::infinity();
        profile.most = std::numeric_limits<double>::infinity();
    }
    takeNumber(row.swing, profile.swing);
    takeNumber(row.noise, profile.noise);
    takeNumber(row.down, profile.down);
}

SignalProfile HistoryProfiles::of(const Nodes::BasicSignal &signal) const
{
    SignalProfile profile = SignalProfile::guess(signal);
    auto row = m_rows.find(signal.GetName());
    if (row == m_rows.end())
        row = m_rows.find(std::to_string(signal.GetId()));
    if (row != m_rows.end())
        apply(row->second, profile);
    return profile;
}

} // namespace Host
