#pragma once

#include <QtGlobal>

#include <atomic>
#include <functional>

namespace Widgets {

/// What an export tells and asks while it runs. On the writing thread.
class DataExportProgress
{
public:
    DataExportProgress(qint64 rows, const std::atomic<bool> &isCancelled,
                       std::function<void(int)> percentTold)
        : m_rows(rows), m_isCancelled(isCancelled), m_percentTold(std::move(percentTold))
    {
    }

    /// After each row; false: stop.
    bool rowDone()
    {
        const int percent = m_rows > 0 ? int(++m_done * 100 / m_rows) : 0;
        if (percent != m_percent)
            m_percentTold(m_percent = percent);
        return !m_isCancelled;
    }

private:
    const qint64 m_rows;
    const std::atomic<bool> &m_isCancelled;
    const std::function<void(int)> m_percentTold;
    qint64 m_done = 0;
    int m_percent = 0;
};

} // namespace Widgets
