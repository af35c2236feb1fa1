#include "widgets/reports/engine/preview/PageLoader.h"

#include <QMetaObject>
#include <QRunnable>
#include <QThreadPool>

namespace LimeReport {

PageLoader::PageLoader(const PageStorePtr &pages, int index) : m_pages(pages), m_index(index) {}

void PageLoader::start()
{
    QThreadPool::globalInstance()->start(QRunnable::create([this] {
        const PrintedPage page = m_pages->page(m_index);
        QMetaObject::invokeMethod(
            this,
            [this, page] {
                emit loaded(m_index, page);
                deleteLater();
            },
            Qt::QueuedConnection);
    }));
}

} // namespace LimeReport
