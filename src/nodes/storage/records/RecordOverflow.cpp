#include "nodes/storage/records/RecordOverflow.h"

#include "nodes/storage/PrivateDirectory.h"

#include <algorithm>
#include <filesystem>

namespace Nodes {

namespace {

bool holdsRecords(const std::unique_ptr<RecordSpill> &spill)
{
    return !spill->IsEmpty();
}

} // namespace

void RecordOverflow::Open(const std::vector<std::string> &directories, const std::string &name,
                          RecordFindings &findings)
{
    const std::lock_guard lock(m_mutex);
    m_spills.clear();
    m_offset = m_readTo = 0;
    for (const std::string &directory : directories) {
        const std::string file = directory + "/" + name;
        auto spill = std::make_unique<RecordSpill>(m_format);
        const Result checked = PrivateDirectory::Check(directory);
        const bool isAbsent = checked == Result::NotFound;
        Result opened = checked;
        if (checked || isAbsent)
            opened = spill->Open(file, findings);
        if (opened) {
            m_spills.push_back(std::move(spill));
            continue;
        }
        RecordFinding refused;
        refused.kind = RecordFinding::SpillRefused;
        refused.place = file;
        refused.detail = opened.GetDetail();
        findings.push_back(std::move(refused));
    }
    m_hasPlace = !m_spills.empty();
    count();
}

Result RecordOverflow::Append(const Records &records)
{
    const std::lock_guard lock(m_mutex);
    // Never into a file before one that holds records: they are read in this order.
    const auto last = std::find_if(m_spills.rbegin(), m_spills.rend(), holdsRecords);
    auto spill = last == m_spills.rend() ? m_spills.begin() : last.base() - 1;
    Result result(Result::StorageError, "no other place to keep records");
    for (; spill != m_spills.end() && !result; ++spill) {
        const std::string file = (*spill)->GetFile();
        result = PrivateDirectory::Make(std::filesystem::path(file).parent_path().string());
        if (result)
            result = (*spill)->Append(records);
    }
    count();
    return result;
}

Result RecordOverflow::Read(std::size_t count, Records &records)
{
    records.clear();
    const std::lock_guard lock(m_mutex);
    const auto first = std::find_if(m_spills.begin(), m_spills.end(), holdsRecords);
    m_readTo = m_offset;
    if (first == m_spills.end())
        return Result();
    const Result result = (*first)->Read(m_readTo, count, records);
    if (!result) {
        RecordFindings ignored; // told by the result; what is sound before it is read again
        const std::string file = (*first)->GetFile();
        (void)(*first)->Open(file, ignored);
        m_offset = 0;
    }
    return result;
}

bool RecordOverflow::Drop()
{
    const std::lock_guard lock(m_mutex);
    const auto first = std::find_if(m_spills.begin(), m_spills.end(), holdsRecords);
    m_offset = m_readTo;
    if (first != m_spills.end() && (*first)->IsReadTo(m_offset) && (*first)->Clear())
        m_offset = m_readTo = 0;
    count();
    return m_count == 0;
}

std::vector<std::string> RecordOverflow::GetFiles() const
{
    std::vector<std::string> files;
    const std::lock_guard lock(m_mutex);
    for (const auto &spill : m_spills) {
        if (holdsRecords(spill))
            files.push_back(spill->GetFile());
    }
    return files;
}

void RecordOverflow::count()
{
    std::size_t count = 0;
    for (const auto &spill : m_spills)
        count += spill->Count();
    m_count = count;
}

} // namespace Nodes
