#pragma once

#include <QString>

namespace Nodes {
class BasicReport;
}

namespace Editor {

/// A plain template made from a report's data sources: head with name and period, a table for each
/// source, page numbers. A4, lying where a table is wide. Complete as it is, and a beginning for
/// whoever draws it on. GUI thread.
class ReportTemplateWriter
{
public:
    /// The text of the .lrxml file.
    static QString write(const Nodes::BasicReport &report);
};

} // namespace Editor
