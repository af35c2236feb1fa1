#pragma once

#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/pages/PageStore.h"

#include <memory>
#include <vector>

namespace LimeReport {

class ContentExpander;
struct TemplateItem;

/// Contents that can be told only after the last page: the number of pages, totals that stand above
/// their rows. Keeps where each stood and fills all of them in at the end.
class LateTexts
{
public:
    explicit LateTexts(PageStore &pages);

    using Place = std::shared_ptr<const ReportScope::Position>;
    /// The number for PageItem::late.
    int add(const TemplateItem &item, const Place &place);
    /// The scope knows the number of pages now.
    void fill(ReportScope &scope, ContentExpander &expander);
    int count() const { return int(m_waiting.size()); }

private:
    struct Waiting
    {
        const TemplateItem *item;
        Place place;
        int late;
    };
    PageStore &m_pages;
    std::vector<Waiting> m_waiting;
};

} // namespace LimeReport
