#include "nodes/visual/events/widgetEventList.h"

#include "nodes/journal/EventJournal.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/system/systemCore.h"
#include "nodes/visual/events/eventColumn.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr Timestamp microseconds = 1000000; // of a second
// Beyond it a time has no sense, and no sum of two overflows.
constexpr unsigned long long latest = 253402300799; // 9999-12-31
// Rows read at most of those that the list may hold: the rest is for events to come.
constexpr std::size_t readPercent = 90;

} // namespace

widgetEventList::widgetEventList()
    : BasicFramedWidget(NColor(227, 231, 234), 1), m_stored(std::make_shared<StoredList>())
{
}

KindInfo widgetEventList::Kind()
{
    return KindBuilder::For<widgetEventList>("eventList", "Event list", "Список событий")
        .Inherit<widgetEventList>();
}

void widgetEventList::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicFramedWidget>()
        .Property<&widgetEventList::m_length>(Prop::Length, "Length of the interval",
                                              "Длина интервала")
        .Range(0, 1000000)
        .Property<&widgetEventList::m_lengthUnit>(Prop::LengthUnit, "Unit of the length",
                                                  "Единица длины")
        .Choice(UnitSeconds, "seconds", "Секунды")
        .Choice(UnitMinutes, "minutes", "Минуты")
        .Choice(UnitHours, "hours", "Часы")
        .Choice(UnitDays, "days", "Дни")
        .Property<&widgetEventList::m_isTracking>(Prop::Tracking, "Follow new events",
                                                  "Следовать за новыми")
        .Property<&widgetEventList::m_iconSize>(Prop::IconSize, "Icon size, px",
                                                "Размер значков, пкс")
        .Range(8, 128)
        .Property<&widgetEventList::m_sources>(Prop::Sources, "Sources", "Источники")
        .Hint("any")
        .Property<&widgetEventList::m_scrollBarSize>(Prop::ScrollBarSize, "Scroll bar size, px",
                                                     "Толщина полос прокрутки, пкс")
        .Range(8, 128)
        .Property<&widgetEventList::m_fontSize>(Prop::FontSize, "Font size", "Размер шрифта")
        .Range(6, 72)
        .Property<&widgetEventList::m_maximumRows>(Prop::MaximumRows, "Rows at most",
                                                   "Строк не более")
        .Range(1, 1000000)
        .Children({NodeType(eventColumn::Code)});
}

long long widgetEventList::GetLengthSeconds() const
{
    constexpr long long minute = 60;
    const long long length = GetLength();
    switch (GetLengthUnit()) {
    case UnitSeconds:
        return length;
    case UnitMinutes:
        return length * minute;
    case UnitHours:
        return length * 60 * minute;
    case UnitDays:
        return length * 24 * 60 * minute;
    default:
        return 0;
    }
}

void widgetEventList::SetLength(int length, int unit)
{
    m_chosen = Chosen{length, unit};
}

NodesArray widgetEventList::GetSources() const
{
    return m_chosenSources ? *m_chosenSources : m_sources;
}

void widgetEventList::SetSources(const NodesArray &sources)
{
    m_chosenSources = sources.GetLinks();
}

std::vector<ColumnInfo> widgetEventList::GetColumns() const
{
    std::vector<ColumnInfo> columns = ColumnInfo::Defaults();
    std::sort(columns.begin(), columns.end(), [](const ColumnInfo &left, const ColumnInfo &right) {
        return left.column < right.column;
    });
    for (const auto &child : Children()) {
        if (const auto *configured = dynamic_cast<const eventColumn *>(child.get())) {
            const ColumnInfo info = configured->GetInfo();
            columns[std::size_t(info.column - ColumnInfo::ColumnTime)] = info;
        }
    }
    return columns;
}

Result widgetEventList::GetHistory(unsigned long long from, unsigned long long to, unsigned view,
                                   const EventChoice &choice)
{
    const systemCore *core = GetCore();
    if (!core)
        return Result(this, Result::NotAvailable, "no running station");
    JournalQuery query;
    query.begin = Timestamp(std::min(from, latest)) * microseconds;
    query.end = (Timestamp(std::min(to, latest)) + 1) * microseconds;
    query.order = JournalQuery::NewestFirst;
    query.limit = std::size_t(m_maximumRows) * readPercent / 100;
    query.levels = choice.levels;
    query.types = choice.types;
    query.users = choice.users;
    query.text = choice.text;
    for (const NodeLink &source : GetSources())
        query.nodes.push_back(core->GetJournal().SourceOf(source));
    Asked &asked = m_asked[view];
    asked.request = ++m_lastRequest;
    return asked.inquiry.Ask(core->GetJournal(), query,
                             [this, view, request = asked.request](const JournalPage &page) {
                                 m_answered(Page{view, request, page});
                             });
}

unsigned widgetEventList::GetRequest(unsigned view) const
{
    const auto asked = m_asked.find(view);
    return asked == m_asked.end() ? 0 : asked->second.request;
}

void widgetEventList::ContinueHistory(unsigned view)
{
    const auto asked = m_asked.find(view);
    if (asked != m_asked.end())
        asked->second.inquiry.Continue();
}

void widgetEventList::CancelHistory(unsigned view)
{
    m_asked.erase(view);
}

Connection widgetEventList::ConnectHistory(PageSlot slot)
{
    return m_answered.Connect(std::move(slot));
}

Connection widgetEventList::ConnectStored(EventsSlot slot)
{
    return m_stored->Connect(std::move(slot));
}

void widgetEventList::OnPropertyChanged(const PropertyDescriptor &descriptor)
{
    BasicFramedWidget::OnPropertyChanged(descriptor);
    if (descriptor.valueId == Prop::Length || descriptor.valueId == Prop::LengthUnit)
        m_chosen.reset();
    else if (descriptor.valueId == Prop::Sources)
        m_chosenSources.reset();
}

Result widgetEventList::OnFirstStart()
{
    if (const systemCore *core = GetCore())
        m_journal = core->GetJournal().ConnectAppended(
            [stored = m_stored](const BasicEvent &event) { (*stored)({EventInfo(event)}); });
    return BasicFramedWidget::OnFirstStart();
}

Result widgetEventList::OnLastStop()
{
    m_journal.Disconnect();
    m_asked.clear();
    return BasicFramedWidget::OnLastStop();
}

} // namespace Nodes
