#pragma once

#include "widgets/reports/engine/layout/BandPrinter.h"

#include <QVariant>

namespace LimeReport {

/// Prints the rows of a data band: headers, groups, the rows with their details, footers.
class DataPrinter
{
public:
    DataPrinter(LayoutContext &context, BandPrinter &printer, const DataBands &data,
                const QString &outerGroup = QString());

    void print();

private:
    QString sourceName() const;
    void printRows(int count);
    void printRow(int row, int count);
    void printDetails();
    void printEnds(const Bands &bands, bool hasRows, bool isHeader);
    void openGroups(int from, int row);
    void closeGroups(int from);
    int changedGroup();
    QVariant key(const TemplateItem &header);
    void setRow(int row);
    double headHeight(std::size_t group) const;
    ContentPlace place(const TemplateItem &band, const QString &group) const;
    QString innermostGroup() const;

    LayoutContext &m_context;
    BandPrinter &m_printer;
    const DataBands &m_data;
    const TemplateItem &m_band;
    bool m_isDetail;
    /// Run of rows that totals of this band's rows count from when it has no group of its own.
    QString m_outerGroup;
    std::vector<QVariant> m_keys;
    int m_holdingGroup = -1;
};

} // namespace LimeReport
