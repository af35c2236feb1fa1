#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Timestamp.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace Nodes {
struct HistoryColumn;
}

namespace Widgets {

/// Samples of several signals as rows of a CSV file, in the order of time. Any thread.
class WIDGETS_EXPORT CsvRows
{
public:
    struct Signal
    {
        QString name;
        QString unit;
    };

    explicit CsvRows(const std::vector<Signal> &written);

    /// First row, with the mark by which spreadsheets know the encoding.
    static QByteArray header();
    /// Local time with its offset from UTC: "2026-11-22T09:31:05.120+03:00".
    static QByteArray time(Nodes::Timestamp time);

    /// Rows of the samples from `from` up to, but not at, `to`; one column for each signal, null
    /// for none.
    QByteArray rows(const std::vector<std::shared_ptr<const Nodes::HistoryColumn>> &columns,
                    Nodes::Timestamp from, Nodes::Timestamp to) const;

private:
    std::vector<QByteArray> m_names; // quoted, with separators
    std::vector<QByteArray> m_units;
};

} // namespace Widgets
