#include "apps/records/SampleTableReader.h"

#include "apps/records/TimeText.h"

#include "nodes/serial/Utf8.h"
#include "nodes/values/NumberText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Records {

namespace {

using Host::CsvField;
using Host::CsvReader;
using Nodes::Quality;
using Nodes::Result;
using Nodes::SampleKind;

constexpr std::array columns{"time", "signal", "value", "quality"};
constexpr const char *header = "time,signal,value,quality";

std::string small(std::string text)
{
    for (char &letter : text) {
        if (letter >= 'A' && letter <= 'Z')
            letter = char(letter - 'A' + 'a');
    }
    return text;
}

std::string quoted(const std::string &text)
{
    constexpr std::size_t shown = 60;
    return text.size() <= shown ? "\"" + text + "\"" : "\"" + text.substr(0, shown) + "...\"";
}

bool isHeader(const std::vector<std::string> &names)
{
    return std::equal(
        names.begin(), names.end(), columns.begin(), columns.end(),
        [](const std::string &name, const char *column) { return small(name) == column; });
}

} // namespace

SampleTableReader::SampleTableReader(const std::string &path)
    : m_path(path), m_name(path == "-" ? "standard input" : path)
{
}

SampleTableReader::~SampleTableReader()
{
    if (m_descriptor > STDIN_FILENO)
        ::close(m_descriptor);
}

Result SampleTableReader::open()
{
    m_descriptor = m_path == "-" ? STDIN_FILENO : ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC);
    if (m_descriptor < 0)
        return Result(Result::NotFound, m_name + ": " + std::strerror(errno));
    struct stat status = {};
    if (::fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode))
        m_size = std::size_t(status.st_size);
    m_reader = std::make_unique<CsvReader>(m_descriptor);
    return readHeader();
}

std::string SampleTableReader::unreadable() const
{
    return m_name + ": " +
           (m_reader->error() == EINTR ? std::string("interrupted")
                                       : std::string(std::strerror(m_reader->error())));
}

Result SampleTableReader::readHeader()
{
    m_reader->guessSeparator();
    const CsvReader::Step step = m_reader->next();
    if (step == CsvReader::Step::Unreadable)
        return Result(Result::StorageError, unreadable());
    std::vector<std::string> names;
    if (step == CsvReader::Step::Record) {
        for (const Field &field : m_reader->fields())
            names.push_back(field.text);
    }
    if (isHeader(names))
        return Result();
    const bool isWide = !names.empty() && names[0].find('\0') != std::string::npos;
    return Result(Result::ParseError,
                  m_name + ":1:1: " +
                      (isWide ? std::string("this is UTF-16; save it as UTF-8")
                              : std::string("the first line has to be ") + header));
}

SampleTableReader::Step SampleTableReader::next(SampleRow &row)
{
    switch (m_reader->next()) {
    case CsvReader::Step::Record:
        return readRow(row) ? Step::Row : Step::BadRow;
    case CsvReader::Step::Fault:
        m_trouble = m_name + ":" + std::to_string(m_reader->faultLine()) + ":" +
                    std::to_string(m_reader->faultColumn()) + ": " + m_reader->fault();
        return Step::BadRow;
    case CsvReader::Step::End:
        return Step::End;
    case CsvReader::Step::Unreadable:
        break;
    }
    m_trouble = unreadable();
    return Step::Failed;
}

bool SampleTableReader::refuse(const Field &field, const std::string &what)
{
    m_trouble = m_name + ":" + std::to_string(field.line) + ":" + std::to_string(field.column) +
                ": " + what;
    return false;
}

bool SampleTableReader::readRow(SampleRow &row)
{
    const std::vector<Field> &fields = m_reader->fields();
    if (fields.size() != columns.size())
        return refuse(fields.size() < columns.size() ? fields.back() : fields[columns.size()],
                      "a row has 4 fields, " + std::string(header) + "; this one has " +
                          std::to_string(fields.size()) + "; put a text with commas in quotes");
    const bool isAllQuoted = fields[0].isQuoted;
    return readTime(fields[0], row) && readSignal(fields[1], row) && readQuality(fields[3], row) &&
           readValue(fields[2], isAllQuoted, row);
}

bool SampleTableReader::readTime(const Field &field, SampleRow &row)
{
    const Result parsed = TimeText::parse(field.text, TimeText::Zone::Told, row.time);
    if (!parsed)
        return refuse(field, parsed.GetDetail());
    return row.time > 0 || refuse(field, quoted(field.text) + " is before 1970");
}

bool SampleTableReader::readSignal(const Field &field, SampleRow &row)
{
    const auto id = Nodes::ParseInteger(field.text);
    if (!id || *id <= 0)
        return refuse(field, quoted(field.text) + " is no id of a signal: give its number, as "
                                                  "\"records archive info\" lists it");
    row.signal = static_cast<unsigned long>(*id);
    return true;
}

bool SampleTableReader::readQuality(const Field &field, SampleRow &row)
{
    const std::string name = small(field.text);
    for (const Quality quality :
         {Quality::Good, Quality::Uncertain, Quality::Bad, Quality::Stale}) {
        if (name == Nodes::QualityToken(quality)) {
            row.quality = quality;
            return true;
        }
    }
    return refuse(field, quoted(field.text) + " is no quality: give good, uncertain, bad or stale");
}

// Quotes tell a text, unless all fields of the row have them, which then says nothing.
bool SampleTableReader::readValue(const Field &field, bool isAllQuoted, SampleRow &row)
{
    if (!field.isQuoted || (isAllQuoted && (field.text.empty() || readPlainValue(field, row))))
        return readPlainValue(field, row);
    const auto invalid = Nodes::FindInvalidUtf8(field.text);
    if (invalid)
        return refuse(field, "the text is no UTF-8; convert the table, with iconv for one");
    if (field.text.find('\0') != std::string::npos)
        return refuse(field, "the text has a zero byte; take it out");
    row.kind = SampleKind::Text;
    row.text = field.text;
    return true;
}

bool SampleTableReader::readPlainValue(const Field &field, SampleRow &row)
{
    const bool isUnknown = row.quality == Quality::Bad || row.quality == Quality::Stale;
    if (field.text.empty()) {
        row.kind = SampleKind::Gap;
        return isUnknown || refuse(field, "the value is missing; without one the quality is bad "
                                          "or stale");
    }
    const std::string word = small(field.text);
    if (word == "true" || word == "false") {
        row.kind = SampleKind::Logical;
        row.number = word == "true" ? 1 : 0;
        return true;
    }
    std::string digits = field.text;
    if (m_reader->separator() != ',')
        std::replace(digits.begin(), digits.end(), ',', '.');
    const auto number = Nodes::ParseDouble(digits);
    if (!number)
        return refuse(field, quoted(field.text) +
                                 " is neither a number nor true nor false; put a text in quotes");
    row.kind = std::isfinite(*number) ? SampleKind::Number : SampleKind::Gap;
    row.number = *number;
    return row.kind == SampleKind::Number || isUnknown ||
           refuse(field, quoted(field.text) + " is no finite number; leave the value empty, with "
                                              "the quality bad");
}

} // namespace Records
