#pragma once

#include "widgets/WidgetsExport.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace LimeReport {

/// What went wrong in a rendering: each text once, however many rows it happened in, in the order
/// of first appearance; bounded. One thread.
class WIDGETS_EXPORT ReportErrors
{
public:
    void add(const QString &text);
    bool isEmpty() const { return m_order.isEmpty(); }
    /// One line each, with the number of times where it is more than one; the last line tells how
    /// many different ones were left out.
    QStringList texts() const;

private:
    QStringList m_order;
    QHash<QString, int> m_counts;
    int m_leftOut = 0;
};

} // namespace LimeReport
