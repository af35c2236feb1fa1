#pragma once

#include "nodes/events/EventInfo.h"
#include "nodes/journal/JournalInquiry.h"
#include "nodes/model/NodesArray.h"
#include "nodes/values/Connection.h"
#include "nodes/values/NFont.h"
#include "nodes/values/SlotList.h"
#include "nodes/visual/elements/BasicFramedWidget.h"
#include "nodes/visual/events/ColumnInfo.h"
#include "nodes/visual/events/EventChoice.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nodes {

/// A table of the journal's events of an interval of days: reads them, and tells those that are
/// stored while it runs.
class NODES_EXPORT widgetEventList : public BasicFramedWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15007);
    struct Prop : BasicFramedWidget::Prop
    {
        static constexpr PropertyId<int> Length{12400, "length"};
        static constexpr PropertyId<int> LengthUnit{12401, "lengthUnit"};
        static constexpr PropertyId<bool> Tracking{12402, "tracking"};
        static constexpr PropertyId<int> IconSize{12403, "iconSize"};
        static constexpr PropertyId<NodeLinks> Sources{12404, "sources"};
        static constexpr PropertyId<int> ScrollBarSize{12405, "scrollBarSize"};
        static constexpr PropertyId<int> FontSize{12406, "fontSize"};
        static constexpr PropertyId<int> MaximumRows{12407, "maximumRows"};
    };

    enum enIntervalUnit { UnitSeconds = 1, UnitMinutes = 2, UnitHours = 3, UnitDays = 4 };

    widgetEventList();
    static KindInfo Kind();

    // The interval as configured, until another one is chosen while the list is shown.
    int GetLength() const { return m_chosen ? m_chosen->length : m_length; }
    int GetLengthUnit() const { return m_chosen ? m_chosen->unit : m_lengthUnit; }
    /// 0 for a unit that is none of the four.
    long long GetLengthSeconds() const;
    /// Chooses another one, which is not saved.
    void SetLength(int length, int unit);

    bool TrackingEnabled() const { return m_isTracking; }
    /// Pixels.
    int GetIconSize() const { return m_iconSize; }
    int GetScrollBarSize() const { return m_scrollBarSize; }
    /// Points.
    int GetFontSize() const { return m_fontSize; }
    /// Rows that a list holds at most.
    int GetMaximumRows() const { return m_maximumRows; }

    /// Nodes whose events are shown; empty: those of all. As configured, until others are chosen.
    NodesArray GetSources() const;
    /// Chooses others, which is not saved; none: all.
    void SetSources(const NodesArray &sources);
    /// What was chosen so; nothing: they are as configured.
    const std::optional<NodeLinks> &GetChosenSources() const { return m_chosenSources; }
    void ResetSources() { m_chosenSources.reset(); }

    /// Each column once, by its code: as the eventColumn children say, else by default.
    std::vector<ColumnInfo> GetColumns() const;

    /// Asks for the events of the sources within `from` to `to`, seconds since 1970-01-01 00:00
    /// UTC, both seconds included, the newest first and not more than the list holds; `choice`:
    /// only of those. Success:
    /// accepted, the answer goes to the subscribers, unless another request of that view replaces
    /// it: a list may be on several displays, each of its views with a number of its own. GUI
    /// thread.
    [[nodiscard]] Result GetHistory(unsigned long long from, unsigned long long to,
                                    unsigned view = 0, const EventChoice &choice = {});
    /// Number of the request of that view that was accepted last; 0: none.
    unsigned GetRequest(unsigned view = 0) const;
    /// A page was taken, another one may come.
    void ContinueHistory(unsigned view = 0);
    /// Ends a request that nobody waits for any more: it is not answered any further.
    void CancelHistory(unsigned view = 0);

    using EventsSlot = std::function<void(const std::vector<EventInfo> &)>;
    struct Page
    {
        unsigned view = 0;    ///< whose request it answers
        unsigned request = 0; ///< see GetRequest
        JournalPage journal;
    };
    using PageSlot = std::function<void(const Page &)>;
    /// The answers, page by page. Called on a thread of the model, which must not wait for the GUI.
    Connection ConnectHistory(PageSlot slot);
    /// Events stored in the journal while the list runs, whatever their source. Likewise.
    Connection ConnectStored(EventsSlot slot);

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;
    void OnPropertyChanged(const PropertyDescriptor &descriptor) override;
    Result OnFirstStart() override;
    Result OnLastStop() override;

private:
    struct Asked
    {
        unsigned request = 0;
        JournalInquiry inquiry;
    };
    struct Chosen
    {
        int length;
        int unit;
    };

    int m_length = 1;
    int m_lengthUnit = UnitDays;
    bool m_isTracking = true;
    int m_iconSize = 40;
    NodeLinks m_sources;
    int m_scrollBarSize = 28;
    int m_fontSize = 11;
    int m_maximumRows = 1000000;
    std::optional<Chosen> m_chosen;           // run-time state
    std::optional<NodeLinks> m_chosenSources; // likewise
    using StoredList = SlotList<const std::vector<EventInfo> &>;

    SlotList<const Page &> m_answered;
    std::shared_ptr<StoredList> m_stored; // the journal may be calling it when this goes
    ScopedConnection m_journal;           // only while started
    unsigned m_lastRequest = 0;
    std::map<unsigned, Asked> m_asked; // by view; last: their slots call the list
};

} // namespace Nodes
