#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>
#include <QVariant>

class QAbstractItemModel;

namespace LimeReport {

/// What a report is filled with: variables and data sources, by name. GUI thread. A report that is
/// being rendered keeps what it began with.
class WIDGETS_EXPORT IDataSourceManager
{
public:
    virtual ~IDataSourceManager() = default;

    /// Makes or replaces a variable, also one that the template declares.
    virtual void setReportVariable(const QString &name, const QVariant &value) = 0;
    /// Nothing happens when there is none.
    virtual void deleteVariable(const QString &name) = 0;
    virtual bool containsVariable(const QString &name) = 0;
    /// Invalid when there is none.
    virtual QVariant variable(const QString &name) = 0;

    /// Makes a data source of `model`, its columns named by the horizontal header; replaces the
    /// source (also a query of the template) of that name. With `owned` the model is deleted when
    /// it is removed, replaced, or with the engine; without, the source is gone once the model is.
    /// False, and nothing is taken, for an empty name or no model.
    virtual bool addModel(const QString &name, QAbstractItemModel *model, bool owned) = 0;
    virtual void removeModel(const QString &name) = 0;
    virtual bool containsDatasource(const QString &name) = 0;
    /// Leaves those that the template declares.
    virtual void clearUserVariables() = 0;
};

} // namespace LimeReport
