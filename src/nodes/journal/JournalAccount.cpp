#include "nodes/journal/JournalAccount.h"

#include <charconv>

namespace Nodes {

namespace {

constexpr std::string_view mark("журнал до записи ");
constexpr const char *journalName = "Журнал";

std::string hexOf(const std::string &bytes)
{
    std::string text;
    for (const char byte : bytes) {
        for (const int shift : {4, 0})
            text += "0123456789abcdef"[static_cast<unsigned char>(byte) >> shift & 0xF];
    }
    return text;
}

} // namespace

JournalAccount JournalAccount::Of(const JournalTables::Link &last)
{
    return {last.id, hexOf(last.hash)};
}

std::optional<JournalAccount> JournalAccount::In(const JournalRow &row)
{
    const std::string &text = row.event.newValue;
    if (row.event.type != TypeSystemState || row.source.name != journalName ||
        text.compare(0, mark.size(), mark) != 0)
        return std::nullopt;
    JournalAccount account;
    const char *const end = text.data() + text.size();
    const auto read = std::from_chars(text.data() + mark.size(), end, account.id);
    if (read.ec != std::errc() || read.ptr == end)
        return std::nullopt;
    account.hash.assign(read.ptr + 1, end);
    return account;
}

void JournalAccount::PutInto(BasicEvent &entry) const
{
    entry.type = TypeSystemState;
    entry.source = journalName;
    entry.newValue = std::string(mark) + std::to_string(id) + " " + hash;
}

// While rows are going the anchor stands before the last one; the rows between prove its hash.
bool JournalAccount::Covers(const JournalTables::Link &anchor) const
{
    return id > anchor.id || (id == anchor.id && hash == hexOf(anchor.hash));
}

} // namespace Nodes
