#pragma once

#include <QString>
#include <QVector>

namespace Nodes {
class BasicReportSource;
}

namespace Editor {

/// A column that a data source of a report gives, as a plain table shows it.
struct ReportColumn
{
    QString key;    ///< by which templates ask for it
    QString title;  ///< Russian, for the head of the table
    int weight = 1; ///< of its width
    bool isNumber = false;
    bool isMarked = false; ///< another column, of the key with "_mark", tells how sure it is
    int decimals = 1;
    QString sample; ///< what a preview without history shows
};

/// Columns of a source worth printing, in their order; none for kinds that are not known. GUI
/// thread.
QVector<ReportColumn> reportColumns(const Nodes::BasicReportSource &source);

} // namespace Editor
