#include "widgets/reports/engine/layout/LateTexts.h"

#include "widgets/reports/engine/layout/ItemContent.h"

namespace LimeReport {

LateTexts::LateTexts(PageStore &pages) : m_pages(pages) {}

int LateTexts::add(const TemplateItem &item, const Place &place)
{
    const int late = m_pages.addLate();
    m_waiting.push_back({&item, place, late});
    return late;
}

void LateTexts::fill(ReportScope &scope, ContentExpander &expander)
{
    for (const Waiting &waiting : m_waiting) {
        scope.setPosition(*waiting.place);
        ContentPlace place = scope.place();
        place.item = waiting.item->name;
        scope.setPlace(place);
        m_pages.setLate(waiting.late, expandItem(*waiting.item, scope, expander).text);
    }
    m_waiting.clear();
}

} // namespace LimeReport
