#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/EventRowColors.h"
#include "widgets/eventlist/EventTexts.h"

#include "nodes/model/links/NodeLink.h"

#include <QHash>

#include <string>
#include <utility>
#include <vector>

namespace Widgets {

/// What many events have in common, kept once: texts, and their sources with the colours of their
/// rows. Outlives the items that refer to it. GUI thread.
class WIDGETS_EXPORT EventPool
{
public:
    struct Source
    {
        EventTexts::Number name = 0;
        Nodes::NodeLink node; ///< empty where the source is no node
        EventRowColors colors;
    };
    using SourceNumber = std::uint32_t;

    EventTexts texts;

    SourceNumber addSource(const std::string &name, const Nodes::NodeLink &node);
    const Source &source(SourceNumber number) const { return m_sources[number]; }
    std::size_t bytes() const { return texts.bytes() + m_sources.size() * sizeof(Source); }

private:
    using Key = std::pair<EventTexts::Number, unsigned long>; // name and node

    std::vector<Source> m_sources;
    QHash<Key, SourceNumber> m_numbers;
};

} // namespace Widgets
