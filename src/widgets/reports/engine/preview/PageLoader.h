#pragma once

#include "widgets/reports/engine/pages/PageStore.h"

#include <QObject>

namespace LimeReport {

/// Reads one page from disk beside the GUI thread and deletes itself.
class PageLoader : public QObject
{
    Q_OBJECT

public:
    PageLoader(const PageStorePtr &pages, int index);

    void start();

signals:
    /// A null page when it cannot be read.
    void loaded(int index, const LimeReport::PrintedPage &page);

private:
    PageStorePtr m_pages;
    int m_index;
};

} // namespace LimeReport
