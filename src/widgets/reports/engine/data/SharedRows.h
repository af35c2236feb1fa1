#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Quality.h"

#include <QStringList>
#include <QVariant>

#include <memory>

namespace LimeReport {

/// Role under which a model tells how good a cell is: the int of a Nodes::Quality. A model without
/// it is taken to be good.
constexpr int QualityRole = 0x0100 + 0x71;

/// Rows of a data source. Immutable, so readable from any thread for as long as it is held.
class WIDGETS_EXPORT SharedRows
{
public:
    virtual ~SharedRows() = default;

    virtual QStringList columns() const = 0;
    virtual int rowCount() const = 0;
    /// Invalid: no value. Row and column are within range.
    virtual QVariant value(int row, int column) const = 0;
    virtual Nodes::Quality quality(int row, int column) const { return Nodes::Quality::Good; }
};

using SharedRowsPtr = std::shared_ptr<const SharedRows>;

/// A QAbstractItemModel that also derives from this hands its rows to a report without a copy:
/// derive for models of many rows. Called on the GUI thread; what it returned doesn't change.
class WIDGETS_EXPORT SharedRowsModel
{
public:
    virtual ~SharedRowsModel() = default;
    virtual SharedRowsPtr sharedRows() const = 0;
};

} // namespace LimeReport
