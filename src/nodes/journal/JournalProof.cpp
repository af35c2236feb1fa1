#include "nodes/journal/JournalProof.h"

#include <algorithm>
#include <utility>

namespace Nodes {

JournalProof::JournalProof(JournalLink last, std::vector<JournalLink> receipts)
    : m_last(std::move(last)), m_receipts(std::move(receipts))
{
    const auto isGone = [this](const JournalLink &receipt) { return receipt.id < m_last.id; };
    m_receipts.erase(std::remove_if(m_receipts.begin(), m_receipts.end(), isGone),
                     m_receipts.end());
    std::sort(m_receipts.begin(), m_receipts.end(),
              [](const JournalLink &a, const JournalLink &b) { return a.id > b.id; });
    m_begun = compareReceipts();
}

Result JournalProof::Broken(const std::string &where)
{
    return Result(Result::Failed, "journal chain broken at " + where);
}

Result JournalProof::compareReceipts()
{
    while (!m_receipts.empty() && m_receipts.back().id == m_last.id) {
        if (m_receipts.back().hash != m_last.hash)
            return Broken("row " + std::to_string(m_last.id) + ": the receipt has another hash");
        m_receipts.pop_back();
    }
    return Result();
}

Result JournalProof::Take(const JournalRow &row, const std::string &hash)
{
    if (!m_begun)
        return m_begun;
    const std::uint64_t id = row.event.id;
    JournalLink next{id, ChainHash(m_last.hash, id, PackRow(row))};
    if (next.id != m_last.id + 1 || hash != next.hash)
        return Broken("row " + std::to_string(next.id));
    m_last = std::move(next);
    if (std::optional<JournalAccount> account = JournalAccount::In(row))
        m_account = std::move(account);
    return compareReceipts();
}

Result JournalProof::Finish(const JournalEnds &ends) const
{
    const JournalLink &anchor = ends.anchor;
    if (!m_begun)
        return m_begun;
    if (m_last.id != ends.head.id || m_last.hash != ends.head.hash)
        return Broken("the end: rows behind row " + std::to_string(m_last.id));
    if (!m_receipts.empty())
        return Broken("the end: row " + std::to_string(m_receipts.back().id) +
                      " of the receipt is not there, the last row is " + std::to_string(m_last.id));
    if (anchor.id > 0 && !(m_account && m_account->Covers(anchor)))
        return Broken("the beginning: rows up to row " + std::to_string(anchor.id) +
                      " are gone, and no entry tells why");
    return Result();
}

} // namespace Nodes
