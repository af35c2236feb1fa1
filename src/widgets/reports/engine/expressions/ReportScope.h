#pragma once

#include "widgets/reports/engine/data/DataSet.h"
#include "widgets/reports/engine/expressions/Aggregate.h"

#include <QDateTime>
#include <QHash>

#include <map>
#include <memory>
#include <optional>

namespace LimeReport {

class DetailIndex;
class ReportErrors;

/// Where content stands: told in errors, and decides which rows an aggregate covers.
struct ContentPlace
{
    /// Rows of an aggregate: of the whole report, of the page under way, or of the run of rows that
    /// AggregateBook::beginGroup(group) opened.
    enum class Range { Report, Page, Group };

    QString band; ///< name of the band
    QString item; ///< name of the item
    Range range = Range::Report;
    QString group = QString(); ///< with Range::Group: name given to beginGroup
    /// Rows of the range are yet to come, as in headers: aggregates need a second pass.
    bool isAhead = false;
};

/// What expressions see while a report is laid out: current row of each source, page numbers,
/// variables. Belongs to the rendering thread.
class WIDGETS_EXPORT ReportScope
{
public:
    /// What content depends on besides data and variables: kept for a second pass over a page.
    struct Position
    {
        QHash<QString, int> rows;
        QHash<QString, int> lines;
        QHash<QString, quint64> runs;              ///< of groups, see AggregateBook
        QHash<QString, AggregateValue> aggregates; ///< as told by the first pass: running totals
        ContentPlace place;
        int page = 1;
    };

    /// `now` is the time all functions tell, so that a report has one.
    explicit ReportScope(DataSet data, const QDateTime &now = QDateTime::currentDateTime());
    ~ReportScope();

    bool hasSource(const QString &source) const;
    /// Rows shown now: of a linked source those that belong to its master's current row.
    int rowCount(const QString &source) const;
    /// Makes `row` (from 0, below rowCount) the source's current one; rows of the sources linked to
    /// it begin anew, before their first. -1: none, as at the beginning.
    void setRow(const QString &source, int row);
    /// As given to setRow.
    int row(const QString &source) const;

    /// Value of the current row; of the first row while none is current, as headers show it.
    /// Invalid when there is none.
    QVariant field(const QString &source, const QString &column) const;
    Nodes::Quality quality(const QString &source, const QString &column) const;
    bool hasColumn(const QString &source, const QString &column) const;
    /// The data source behind a name (of a linked one: the filtered source), and the row of it that
    /// row `row` stands for. For charts and exports.
    const DataSource *source(const QString &source) const;
    int sourceRow(const QString &source, int row) const;
    /// The row of source() that field() reads; -1 when there is none.
    int shownRow(const QString &source) const;

    bool hasVariable(const QString &name) const;
    QVariant variable(const QString &name) const;
    void setVariable(const QString &name, const QVariant &value);

    /// Number of the row within its band, from 1; what line("band") tells.
    void setLine(const QString &band, int line) { m_position.lines.insert(band, line); }
    int line(const QString &band) const { return m_position.lines.value(band, 0); }

    void setPlace(const ContentPlace &place) { m_position.place = place; }
    const ContentPlace &place() const { return m_position.place; }
    /// From 1.
    void setPage(int page) { m_position.page = page; }
    int page() const { return m_position.page; }
    /// Unknown in the first pass.
    void setPageCount(std::optional<int> count) { m_pageCount = count; }
    std::optional<int> pageCount() const { return m_pageCount; }

    /// Files that a template names are looked for below this directory and nowhere else; "": none.
    void setFilesDirectory(const QString &directory) { m_filesDirectory = directory; }
    const QString &filesDirectory() const { return m_filesDirectory; }

    const QDateTime &now() const { return m_now; }
    ReportErrors &errors() { return *m_errors; }
    /// Adds to errors(), with the place.
    void addError(const QString &text);

    /// Kept beside what needs a second pass, and put back for it.
    const Position &position() const { return m_position; }
    void setPosition(const Position &position) { m_position = position; }
    /// Number of the run of rows that is open in a group; 0: none. Set by AggregateBook.
    void setRun(const QString &group, quint64 run) { m_position.runs.insert(group, run); }
    quint64 run(const QString &group) const { return m_position.runs.value(group, 0); }

    /// What an aggregate was when content was expanded last in the first pass.
    void keepAggregate(const QString &key, const AggregateValue &value);
    void forgetAggregates();

private:
    const DetailIndex *detail(const QString &source) const;

    DataSet m_data;
    QDateTime m_now;
    QString m_filesDirectory;
    Position m_position;
    std::optional<int> m_pageCount;
    std::unique_ptr<ReportErrors> m_errors;
    mutable std::map<QString, std::unique_ptr<DetailIndex>> m_details; // made when first asked
};

} // namespace LimeReport
