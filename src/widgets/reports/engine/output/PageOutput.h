#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/engine/pages/PageStore.h"
#include "widgets/reports/engine/template/ReportTemplate.h"

#include <atomic>
#include <functional>

class QPrinter;

namespace LimeReport {

/// Puts the pages of a rendering into a file or onto a printer. Each call belongs to one thread,
/// which is not to be that of the GUI.
class WIDGETS_EXPORT PageOutput
{
public:
    PageOutput(ReportTemplatePtr report, PageStorePtr pages);

    /// After each page.
    void onPage(std::function<void(int pages)> call) { m_onPage = std::move(call); }
    /// The file appears when it is whole, in place of one of that name; a failure leaves that one.
    /// "" or why not, for operators.
    QString savePdf(const QString &file, const std::atomic<bool> &isCancelled);
    QString print(QPrinter &printer, const std::atomic<bool> &isCancelled);

    static QString cancelled() { return QStringLiteral("Отменено."); }

private:
    template <class Device>
    QString paint(Device &device, int first, int last, const std::atomic<bool> &isCancelled);

    ReportTemplatePtr m_report;
    PageStorePtr m_pages;
    std::function<void(int)> m_onPage;
};

} // namespace LimeReport
