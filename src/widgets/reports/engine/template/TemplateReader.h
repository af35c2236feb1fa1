#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/engine/template/ReportTemplate.h"

namespace LimeReport {

/// Reads templates (.lrxml). What is not known is kept and told in `problems`; what would take
/// the station down (a page of a square kilometre, a million items, nesting without end) is
/// refused.
class WIDGETS_EXPORT TemplateReader
{
public:
    /// Null when it cannot be used; `error` then says what is wrong and where. Any thread.
    static ReportTemplatePtr readFile(const QString &file, QString &error);
    /// `directory`: see ReportTemplate.
    static ReportTemplatePtr read(const QByteArray &xml, const QString &name,
                                  const QString &directory, QString &error);
};

} // namespace LimeReport
