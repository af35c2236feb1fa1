#pragma once

#include "widgets/reports/engine/data/DataSet.h"

#include <QStringList>

namespace LimeReport {

/// What a template declares under `datasourcesManager`. Any thread.
struct WIDGETS_EXPORT TemplateSources
{
    /// `properties`: collections are lists of maps. Variables with `name` and `value`; links from
    /// `subproxies` with `name`, `master`, `child` and `fieldsCorrelation` of pairs `master` and
    /// `detail`.
    static TemplateSources read(const QVariantMap &properties);

    QVariantMap variables;
    QList<DetailLink> links;
    QStringList errors; ///< what isn't understood: what, where, what to do
};

} // namespace LimeReport
