#include "nodes/journal/JournalOverflow.h"

#include "nodes/storage/PrivateDirectory.h"

#include <algorithm>
#include <filesystem>

namespace Nodes {

namespace {

bool holdsRows(const std::unique_ptr<JournalSpill> &spill)
{
    return !spill->IsEmpty();
}

} // namespace

void JournalOverflow::Open(const std::vector<std::string> &directories, const std::string &name,
                           std::vector<std::string> &findings)
{
    const std::lock_guard lock(m_mutex);
    m_spills.clear();
    m_offset = m_readTo = 0;
    for (const std::string &directory : directories) {
        const std::string file = directory + "/" + name;
        auto spill = std::make_unique<JournalSpill>();
        JournalSpill::Damage damage;
        const Result checked = PrivateDirectory::Check(directory);
        const bool isAbsent = checked == Result::NotFound;
        Result opened = checked;
        if (checked || isAbsent)
            opened = spill->Open(file, damage);
        if (!opened)
            findings.push_back("Файл " + file + " недоступен: " + opened.GetDetail());
        if (damage.isTorn)
            findings.push_back("Файл " + file + " повреждён в конце; копия: " + damage.copy);
        if (opened)
            m_spills.push_back(std::move(spill));
    }
    m_hasPlace = !m_spills.empty();
    count();
}

Result JournalOverflow::Append(const std::vector<JournalRow> &rows)
{
    const std::lock_guard lock(m_mutex);
    // Never into a file before one that holds rows: they are read in this order.
    const auto last = std::find_if(m_spills.rbegin(), m_spills.rend(), holdsRows);
    auto spill = last == m_spills.rend() ? m_spills.begin() : last.base() - 1;
    Result result(Result::StorageError, "no other place to keep records");
    for (; spill != m_spills.end() && !result; ++spill) {
        const std::string file = (*spill)->GetFile();
        result = PrivateDirectory::Make(std::filesystem::path(file).parent_path().string());
        if (result)
            result = (*spill)->Append(rows);
    }
    count();
    return result;
}

Result JournalOverflow::Read(std::size_t count, std::vector<JournalRow> &rows)
{
    rows.clear();
    const std::lock_guard lock(m_mutex);
    const auto first = std::find_if(m_spills.begin(), m_spills.end(), holdsRows);
    m_readTo = m_offset;
    if (first == m_spills.end())
        return Result();
    const Result result = (*first)->Read(m_readTo, count, rows);
    if (!result) {
        JournalSpill::Damage ignored; // told by the result; what is sound before it is read again
        const std::string file = (*first)->GetFile();
        (void)(*first)->Open(file, ignored);
        m_offset = 0;
    }
    return result;
}

bool JournalOverflow::Drop()
{
    const std::lock_guard lock(m_mutex);
    const auto first = std::find_if(m_spills.begin(), m_spills.end(), holdsRows);
    m_offset = m_readTo;
    if (first != m_spills.end() && (*first)->IsReadTo(m_offset) && (*first)->Clear())
        m_offset = m_readTo = 0;
    count();
    return m_count == 0;
}

std::vector<std::string> JournalOverflow::GetFiles() const
{
    std::vector<std::string> files;
    const std::lock_guard lock(m_mutex);
    for (const auto &spill : m_spills) {
        if (holdsRows(spill))
            files.push_back(spill->GetFile());
    }
    return files;
}

void JournalOverflow::count()
{
    std::size_t count = 0;
    for (const auto &spill : m_spills)
        count += spill->Count();
    m_count = count;
}

} // namespace Nodes
