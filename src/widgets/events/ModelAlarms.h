#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/EventInfo.h"

#include <QAbstractTableModel>
#include <QFont>
#include <QHash>
#include <QVector>

#include <memory>
#include <vector>

namespace Nodes {
class systemAlarming;
}

namespace Widgets {

/// Whether an alarm's condition is present, as its row has it under StateCodeRole.
enum enAlarmStateCode {
    AlarmElsewhere = 0, ///< no alarm, or shelved, suppressed, out of service: not on the list
    AlarmGone = 2,
    AlarmPresent = 3
};
WIDGETS_EXPORT enAlarmStateCode AlarmStateCode(const Nodes::BasicEvent &event);

/// State of a row's sound.
enum enAlarmSound {
    SoundNone = 0, ///< waits for acknowledgement, but has no sound
    SoundPlaying = 1,
    SoundAcknowledged = 3
};

/// The alarms of the alarm window, one row each, in the order of their coming. Columns and fonts
/// are the alarm subsystem's. GUI thread.
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
        SortRole,
        ColumnKindRole ///< int, Nodes::alarmColumn::ColumnKind
    };

    explicit ModelAlarms(QObject *parent = nullptr);
    ~ModelAlarms() override;

    /// Takes columns and fonts from the subsystem; all kinds of column without one or when it has
    /// none configured.
    void readSettings(const Nodes::systemAlarming *alarming);
    /// Configured width of a column, pixels; 0 when it is to fit.
    int columnWidth(int column) const { return m_columns[column].width; }
    int columnKind(int column) const { return m_columns[column].kind; }
    const QFont &font() const { return m_font; }
    /// Of the badge in the first column, pixels.
    int badgeHeight() const;
    /// First column of that kind; -1 without one.
    int columnOf(int kind) const;

    /// Row of the alarm that the event is about; -1 without one.
    int rowOf(const Nodes::BasicEvent &event) const;
    const Nodes::EventInfo &info(int row) const { return *m_rows[std::size_t(row)].info; }
    /// Appends a row; its number.
    int append(const Nodes::BasicEvent &event);
    /// Whether the event says anything new; the row then shows it.
    bool update(int row, const Nodes::BasicEvent &event);
    /// Over and acknowledged: nothing is left to be done about it.
    bool isInactive(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Takes SoundStateRole and AcknowledgedRole.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;

private:
    struct Column
    {
        QString name;
        int kind;
        int width;
    };
    struct Row
    {
        std::unique_ptr<Nodes::EventInfo> info; // pointed to from outside
        int stateCode;
        int soundState;
        QString soundFile;
        bool isAcknowledged;
    };

    static void take(Row &row, const Nodes::BasicEvent &event);
    /// As the row shows it now: an acknowledgement counts before the subsystem tells it.
    static Nodes::AlarmState shownState(const Row &row);
    QVariant text(const Row &row, int number, int kind) const;
    QVariant sortKey(const Row &row, int number, int kind) const;
    QVariant look(const Row &row, int column, int role) const;
    static QVariant state(const Row &row, int role);

    QVector<Column> m_columns;
    QFont m_font;
    QFont m_headerFont;
    std::vector<Row> m_rows;
    QHash<unsigned long, int> m_rowOfNode;
};

} // namespace Widgets

Q_DECLARE_METATYPE(const Nodes::EventInfo *)
