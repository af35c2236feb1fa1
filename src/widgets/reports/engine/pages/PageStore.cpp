#include "widgets/reports/engine/pages/PageStore.h"

#include <QDir>
#include <QMutexLocker>
#include <QTemporaryFile>

namespace LimeReport {

PageStore::PageStore(qint64 memory) : m_memory(memory) {}

PageStore::~PageStore() = default;

QString PageStore::append(const PrintedPage &page)
{
    const QByteArray bytes = toBytes(page);
    QMutexLocker lock(&m_mutex);
    Kept kept;
    kept.size = page.size;
    QString error;
    if (m_used + bytes.size() <= m_memory) {
        kept.bytes = bytes;
        m_used += bytes.size();
    } else {
        error = spill(kept, bytes);
    }
    if (error.isEmpty())
        m_pages.push_back(std::move(kept));
    return error;
}

QString PageStore::spill(Kept &kept, const QByteArray &bytes)
{
    if (!m_file) {
        m_file = std::make_unique<QTemporaryFile>(
            QDir::temp().filePath(QStringLiteral("station-report-XXXXXX.pages")));
        if (!m_file->open())
            return QStringLiteral("листы не помещаются на диск (%1: %2).")
                .arg(QDir::tempPath(), m_file->errorString());
    }
    kept.offset = m_file->size();
    kept.length = bytes.size();
    if (m_file->seek(kept.offset) && m_file->write(bytes) == bytes.size() && m_file->flush())
        return QString();
    const QString error = QStringLiteral("листы не помещаются на диск (%1: %2).")
                              .arg(m_file->fileName(), m_file->errorString());
    m_file->resize(kept.offset);
    return error;
}

int PageStore::count() const
{
    QMutexLocker lock(&m_mutex);
    return int(m_pages.size());
}

QSizeF PageStore::size(int index) const
{
    QMutexLocker lock(&m_mutex);
    return index >= 0 && index < int(m_pages.size()) ? m_pages[std::size_t(index)].size : QSizeF();
}

bool PageStore::isOnDisk(int index) const
{
    QMutexLocker lock(&m_mutex);
    return index >= 0 && index < int(m_pages.size()) && m_pages[std::size_t(index)].offset >= 0;
}

QByteArray PageStore::bytes(const Kept &kept) const
{
    if (kept.offset < 0)
        return kept.bytes;
    return m_file->seek(kept.offset) ? m_file->read(kept.length) : QByteArray();
}

PrintedPage PageStore::page(int index) const
{
    QByteArray compressed;
    {
        QMutexLocker lock(&m_mutex);
        if (index < 0 || index >= int(m_pages.size()))
            return PrintedPage();
        compressed = bytes(m_pages[std::size_t(index)]);
    }
    PrintedPage page = pageFromBytes(compressed);
    QMutexLocker lock(&m_mutex);
    for (PageItem &item : page.items) {
        const auto late = item.late < 0 ? m_late.constEnd() : m_late.constFind(item.late);
        if (late != m_late.constEnd())
            item.text = *late;
    }
    return page;
}

int PageStore::addLate()
{
    QMutexLocker lock(&m_mutex);
    return m_lateCount++;
}

void PageStore::setLate(int late, const QString &text)
{
    QMutexLocker lock(&m_mutex);
    m_late.insert(late, text);
}

qint64 PageStore::memoryUsed() const
{
    QMutexLocker lock(&m_mutex);
    return m_used;
}

} // namespace LimeReport
