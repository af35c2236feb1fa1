#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/events/AlarmColumns.h"
#include "widgets/events/AlarmRow.h"
#include "widgets/events/AlarmSoundBook.h"

#include <QAbstractTableModel>
#include <QFont>
#include <QHash>
#include <QVector>

#include <vector>

namespace Nodes {
class systemAlarming;
}

namespace Widgets {

/// The alarms of the alarm window, one row each, in the order of their coming. Columns and fonts
/// are the alarm subsystem's. What changes at once is announced at once: a batch is one
/// dataChanged, one insertion and a few removals, or a reset where very many would be needed. GUI
/// thread.
class WIDGETS_EXPORT ModelAlarms : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role {
        SoundStateRole = Qt::UserRole, ///< int, enAlarmSound
        StateCodeRole,                 ///< int, enAlarmStateCode
        SoundFileRole,                 ///< QString, full path; "" without
        EventInfoRole,                 ///< const Nodes::EventInfo *, valid while the row is there
        AcknowledgedRole,              ///< bool
        SourceRole,                    ///< Nodes::NodeLink
        ColumnKindRole                 ///< int, Nodes::alarmColumn::ColumnKind
    };

    /// What a batch did.
    struct Taken
    {
        bool isOrderChanged = false; ///< rows may have to stand elsewhere
        bool isNews = false;         ///< an operator has to see it, see AlarmRow::enNews
    };

    explicit ModelAlarms(QObject *parent = nullptr);
    ~ModelAlarms() override;

    /// Takes columns and fonts from the subsystem; all kinds of column without one or when it has
    /// none configured.
    void readSettings(const Nodes::systemAlarming *alarming);
    /// Whether rows stand by area: then there is a column of areas in any case.
    void setGrouped(bool isGrouped);
    const AlarmColumns &columns() const { return m_columns; }
    const QFont &font() const { return m_font; }
    /// Of the badge, pixels.
    int badgeHeight() const;

    /// Brings the rows up to date with what became of their alarms, all in one go: adds those that
    /// are new, removes what is shelved, suppressed or out of service, and what is inactive while
    /// that is to be removed.
    Taken take(const std::vector<Nodes::BasicEvent> &events);
    /// Marks rows acknowledged. Whether rows may stand in another order now.
    bool acknowledge(const std::vector<int> &rows);
    /// Removes what is over and acknowledged, now and from now on.
    void setRemoveInactive(bool isRemoving);

    /// Row of the alarm of that id; -1 without one.
    int rowOf(unsigned long alarm) const { return m_rowOfAlarm.value(alarm, -1); }
    const AlarmRow &row(int number) const { return m_rows[std::size_t(number)]; }
    /// Below, at or above 0 as one row stands before, beside or after another by that column.
    int compare(int column, int left, int right) const;
    /// What is to be heard of the alarms that wait.
    AlarmSoundChoice sounds() const { return m_sounds.choice(); }
    /// Grows with each batch; see AlarmRow::waitsSince.
    unsigned revision() const { return m_revision; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Takes SoundStateRole and AcknowledgedRole.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;

signals:
    /// Columns or fonts are others than before.
    void columnsChanged();

private:
    /// Rows touched by a batch.
    struct Touched
    {
        void add(int row);
        int first = -1;
        int last = -1;
    };

    /// Changes the row and what is counted of it.
    template <class Change> void change(AlarmRow &row, Change apply);
    AlarmRow::enNews update(AlarmRow &row, const Nodes::BasicEvent &event);
    /// Counts the row's sound in or out.
    void count(const AlarmRow &row, int step);
    bool shouldLeave(const AlarmRow &row) const;
    void append(std::vector<AlarmRow> &added);
    void announce(const Touched &touched);
    void removeLeaving();
    void reindex(int from);
    QVariant look(const AlarmRow &row, int column, int role) const;
    static QVariant state(const AlarmRow &row, int role);

    AlarmColumns m_columns;
    QFont m_font;
    QFont m_boldFont; // of rows that wait
    QFont m_headerFont;
    std::vector<AlarmRow> m_rows;
    QHash<unsigned long, int> m_rowOfAlarm;
    AlarmSoundDefaults m_soundDefaults;
    AlarmSoundBook m_sounds;
    unsigned m_revision = 0;
    bool m_isRemoving = true;
};

} // namespace Widgets

Q_DECLARE_METATYPE(const Nodes::EventInfo *)
