#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/engine/pages/PageItem.h"

#include <QHash>
#include <QMutex>
#include <QStringList>

#include <memory>
#include <vector>

class QTemporaryFile;

namespace LimeReport {

/// The pages of one rendering, kept as compressed bytes: in memory up to a bound, beyond it in a
/// temporary file. One thread appends while others read.
class WIDGETS_EXPORT PageStore
{
public:
    static constexpr qint64 DefaultMemory = 32 << 20;

    explicit PageStore(qint64 memory = DefaultMemory);
    ~PageStore();

    /// "" or why the page could not be kept.
    QString append(const PrintedPage &page);
    int count() const;
    /// Without opening the page; empty beyond the last.
    QSizeF size(int index) const;
    /// With late texts put in as far as they are told. A null page when it cannot be read back.
    PrintedPage page(int index) const;
    /// Whether page() has to read the file.
    bool isOnDisk(int index) const;

    /// Late texts: those with the number of pages or totals in them, which are known after the last
    /// page. Returns the number to put into PageItem::late.
    int addLate();
    void setLate(int late, const QString &text);

    /// Bytes of pages in memory, for bounds and tests.
    qint64 memoryUsed() const;

private:
    struct Kept
    {
        QByteArray bytes;   // in memory, or
        qint64 offset = -1; // in the file
        qint32 length = 0;
        QSizeF size;
    };
    QString spill(Kept &kept, const QByteArray &bytes);
    QByteArray bytes(const Kept &kept) const;

    mutable QMutex m_mutex;
    qint64 m_memory;
    qint64 m_used = 0;
    std::vector<Kept> m_pages;
    std::unique_ptr<QTemporaryFile> m_file;
    QHash<int, QString> m_late;
    int m_lateCount = 0;
};

using PageStorePtr = std::shared_ptr<PageStore>;

} // namespace LimeReport
