#pragma once

#include "widgets/reports/engine/data/DataSource.h"

#include <QMap>
#include <QVariantMap>

namespace LimeReport {

/// A source whose rows depend on another's current row: shown are those whose `detailColumns` equal
/// the master's `masterColumns`, in order.
struct DetailLink
{
    QString name;   ///< of the linked source, as bands name it
    QString master; ///< source whose current row decides
    QString detail; ///< source that is filtered
    QStringList masterColumns;
    QStringList detailColumns; ///< as many as masterColumns
};

/// All that a rendering reads. A copy of what the manager held at its begin; cheap to copy, any
/// thread.
struct DataSet
{
    QMap<QString, DataSource> sources;
    QList<DetailLink> links;
    QVariantMap variables;
};

} // namespace LimeReport
