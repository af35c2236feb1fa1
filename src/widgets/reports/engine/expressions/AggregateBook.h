#pragma once

#include "widgets/WidgetsExport.h"

#include "widgets/reports/engine/expressions/Aggregate.h"

#include <QString>

#include <memory>

namespace LimeReport {

class ExpressionValues;
class ReportScope;

/// Keeps what the aggregates of a template need, row by row: SUM COUNT AVG MIN MAX(expression,
/// "band"). Values that are missing, no numbers or of bad quality do not count; an aggregate of
/// none is no value (COUNT: 0). Rendering thread.
///
/// The layout calls, for each row of a band: takeRow before its contents are expanded (so that
/// running aggregates in the row have it), placeRow once it is certain on which page it stands.
/// A row that moves to the next page is placed after its beginPage.
class WIDGETS_EXPORT AggregateBook
{
public:
    AggregateBook();
    ~AggregateBook();

    /// Finds the aggregates in a template's contents (each item's `content`, group conditions and
    /// so on). All are told before the first row; what is asked for later is an error.
    void addContent(const QString &content, bool isHtml = false);
    bool isEmpty() const;

    void takeRow(const QString &band, ExpressionValues &values, ReportScope &scope);
    void placeRow(const QString &band);
    /// The rows placed from here on stand on that page (from 1, no two alike).
    void beginPage(int page);
    /// A run of rows begins: those of one group, or the sub-detail rows of one master row; `group`
    /// is the name that ContentPlace::group tells. A run of that name that is open ends.
    void beginGroup(const QString &group, ReportScope &scope);
    void endGroup(const QString &group);
    /// After the last row: what headers ask for is complete.
    void finish();
    bool isFinished() const;

    /// Of the range that `scope.place()` tells: as far as rows were taken.
    AggregateValue value(const AggregateRequest &request, const ReportScope &scope) const;

private:
    struct Part;
    std::unique_ptr<Part> m_part;
};

} // namespace LimeReport
