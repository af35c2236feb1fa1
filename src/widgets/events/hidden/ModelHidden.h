#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QAbstractTableModel>
#include <QHash>

#include <vector>

namespace Widgets {

/// Alarms that are shelved, suppressed or out of service: who hid them, why and until when. GUI
/// thread.
class WIDGETS_EXPORT ModelHidden : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { State, Text, Area, Who, Reason, Until, ColumnCount };
    enum Role {
        SortRole = Qt::UserRole ///< what the rows of a column are sorted by
    };
    struct Counts
    {
        int shelved = 0;
        int suppressed = 0;
        int outOfService = 0;
    };

    explicit ModelHidden(QObject *parent = nullptr);

    static bool isHidden(const Nodes::BasicEvent &event);
    /// Suppressed while a condition of the project holds: nobody can take that back by hand.
    static bool isByDesign(const Nodes::BasicEvent &event);

    /// How these alarms stand now; those that are not hidden leave.
    void take(const std::vector<Nodes::BasicEvent> &events);
    /// The present time, for what is left until an alarm comes back.
    void setNow(Nodes::Timestamp now);

    const Nodes::BasicEvent &event(int row) const { return m_events[std::size_t(row)]; }
    Counts counts() const;
    /// Ids of all of them.
    std::vector<unsigned long> alarms() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void rebuild(const std::vector<Nodes::BasicEvent> &events);
    void takeOne(const Nodes::BasicEvent &event);
    void reindex(int from);
    QString text(const Nodes::BasicEvent &event, int column) const;
    QVariant sortKey(const Nodes::BasicEvent &event, int column) const;
    QString untilText(const Nodes::BasicEvent &event) const;

    std::vector<Nodes::BasicEvent> m_events;
    QHash<unsigned long, int> m_rowOfAlarm;
    Nodes::Timestamp m_now = 0;
};

} // namespace Widgets
