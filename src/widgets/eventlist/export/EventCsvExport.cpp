#include "widgets/eventlist/export/EventCsvExport.h"

#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/export/EventCsvFile.h"

#include "nodes/journal/JournalReader.h"

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

constexpr std::size_t portion = 1000; // events

} // namespace

EventCsvExport::EventCsvExport(const WidgetEventModel *model, std::vector<std::uint32_t> rows,
                               std::unique_ptr<Nodes::JournalReader> journal, QObject *parent)
    : QObject(parent),
      m_model(model),
      m_rows(std::move(rows)),
      m_file(new EventCsvFile(std::move(journal)))
{
    m_file->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_file, &QObject::deleteLater);
    connect(m_file, &EventCsvFile::written, this, &EventCsvExport::onWritten);
    connect(m_file, &EventCsvFile::closed, this, &EventCsvExport::onClosed);
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        fail(QStringLiteral("Список читается заново: файл не записан. Повторите сохранение."));
    });
    m_thread.start();
}

EventCsvExport::~EventCsvExport()
{
    if (!m_isEnded)
        QMetaObject::invokeMethod(m_file, [file = m_file] { file->close(false); });
    m_thread.quit();
    m_thread.wait();
}

void EventCsvExport::start(const QString &name)
{
    QMetaObject::invokeMethod(m_file, [file = m_file, name] { file->open(name); });
}

void EventCsvExport::cancel()
{
    fail(QStringLiteral("Сохранение отменено"));
}

void EventCsvExport::fail(const QString &error)
{
    if (m_isEnded || !m_error.isEmpty())
        return;
    m_error = error;
    QMetaObject::invokeMethod(m_file, [file = m_file] { file->close(false); });
}

EventCsvExport::Portion EventCsvExport::next()
{
    Portion next;
    const std::size_t end = std::min(m_done + portion, m_rows.size());
    for (; m_done < end; ++m_done) {
        const WidgetEventItem &item = m_model->getItems()[m_rows[m_done]];
        if (item.isCut())
            next.cut.push_back(next.events.size());
        next.events.push_back(item.event());
    }
    return next;
}

// Some are handed over after those before them are written: a slow disk holds up no memory.
void EventCsvExport::onWritten(const QString &error)
{
    if (m_isEnded || !m_error.isEmpty())
        return;
    if (!error.isEmpty())
        return fail(error);
    emit progressed(m_rows.empty() ? 100 : int(100 * m_done / m_rows.size()));
    if (m_done == m_rows.size() || !m_model) {
        QMetaObject::invokeMethod(m_file, [file = m_file] { file->close(true); });
        return;
    }
    QMetaObject::invokeMethod(m_file, [file = m_file, portion = next()] {
        file->writeEvents(portion.events, portion.cut);
    });
}

void EventCsvExport::onClosed(const QString &error)
{
    if (m_isEnded)
        return;
    m_isEnded = true;
    emit finished(m_error.isEmpty() ? error : m_error);
}

} // namespace Widgets
