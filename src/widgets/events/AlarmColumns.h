#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>
#include <QVector>

namespace Nodes {
class systemAlarming;
}

namespace Widgets {

/// Columns of a list of alarms: those of the alarm subsystem.
class WIDGETS_EXPORT AlarmColumns
{
public:
    struct Column
    {
        QString name;
        int kind;  ///< Nodes::alarmColumn::ColumnKind
        int width; ///< configured, pixels; 0 when it is to fit
    };

    AlarmColumns();

    /// The usual five without a subsystem, or when it has none configured.
    void read(const Nodes::systemAlarming *alarming);
    /// While rows stand by area there is a column of areas in any case.
    void setGrouped(bool isGrouped);
    bool isGrouped() const { return m_isGrouped; }

    int count() const { return m_columns.size(); }
    const Column &operator[](int column) const { return m_columns[column]; }
    /// First column of that kind; -1 without one.
    int columnOf(int kind) const;
    /// Where the badge stands: in the column of priorities, else in the first one.
    int badgeColumn() const;

    /// What a column of that kind has to hold at most.
    static QString widestText(int kind);
    /// Pixels; what is narrower is of no use, QWIDGETSIZE_MAX: it is not made narrower.
    static int leastWidth(int kind);

private:
    void addArea();

    QVector<Column> m_columns;
    bool m_isGrouped = false;
    bool m_isAreaAdded = false; // for the time of grouping
};

} // namespace Widgets
