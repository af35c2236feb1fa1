#pragma once

#include <QString>

#include <atomic>
#include <functional>

namespace LimeReport {

class AggregateBook;
class ContentExpander;
class PageStore;
class ReportScope;
struct ReportTemplate;

/// What the parts of a layout share. Rendering thread, but for `isCancelled`.
struct LayoutContext
{
    const ReportTemplate &report;
    ReportScope &scope;
    ContentExpander &expander;
    AggregateBook &book;
    PageStore &pages;
    const std::atomic<bool> &isCancelled;
    /// After each page.
    std::function<void(int pages)> onPage;
    /// Why there are no more pages although there is more to print; "" while there are.
    QString failure;

    bool isStopped() const { return isCancelled || !failure.isEmpty(); }
};

} // namespace LimeReport
