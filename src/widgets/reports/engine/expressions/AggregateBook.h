#pragma once

#include "widgets/WidgetsExport.h"

#include "widgets/reports/engine/expressions/ReportScope.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace LimeReport {

class ContentExpander;

enum class Aggregate { Sum, Count, Average, Minimum, Maximum };

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
    void addContent(const QString &content);
    bool isEmpty() const;

    void takeRow(const QString &band, ContentExpander &expander, ReportScope &scope);
    void placeRow(const QString &band);
    /// The rows placed from here on stand on that page (from 1, no two alike).
    void beginPage(int page);
    /// A run of rows begins: those of one group, or the sub-detail rows of one master row; `group`
    /// is the name that ContentPlace::group tells. A run of that name that is open ends.
    void beginGroup(const QString &group, ReportScope &scope);
    void endGroup(const QString &group);

    /// Of the range that `scope.place()` tells. Invalid for no value. `error` tells what is wrong
    /// with the request, "" when nothing is. In a header, whose rows are yet to come, it is the
    /// value so far: headers are expanded again in the second pass, see `isFinal`.
    QVariant value(Aggregate function, const QString &expression, const QString &band,
                   const ReportScope &scope, QString *error = nullptr) const;
    /// Whether more rows may come for that range: then content needs a second pass.
    bool isFinal(const ReportScope &scope) const;
    /// After the last row: every range is final, those of pages and groups are remembered.
    void finish();

private:
    struct Part;
    std::unique_ptr<Part> m_part;
};

} // namespace LimeReport
