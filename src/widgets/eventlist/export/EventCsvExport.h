#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QObject>
#include <QPointer>
#include <QThread>

#include <cstdint>
#include <memory>
#include <vector>

namespace Nodes {
class JournalReader;
}

namespace Widgets {

class EventCsvFile;
class WidgetEventModel;

/// Writes rows of a list into a CSV file, some at a time, on a thread of its own; what the list has
/// cut off its texts is read from the journal there. The file appears under its name when all of it
/// is written. GUI thread.
class WIDGETS_EXPORT EventCsvExport : public QObject
{
    Q_OBJECT

public:
    /// `rows` of the model, in the order to be written; rows that come later do not count.
    /// `journal` may be null: cut texts then stay as they are.
    EventCsvExport(const WidgetEventModel *model, std::vector<std::uint32_t> rows,
                   std::unique_ptr<Nodes::JournalReader> journal, QObject *parent = nullptr);
    ~EventCsvExport() override;

    void start(const QString &file);
    /// Leaves no file.
    void cancel();

signals:
    /// 0 to 100.
    void progressed(int percent);
    /// Ended; "" after success, else what is wrong, for operators.
    void finished(const QString &error);

private:
    struct Portion
    {
        std::vector<Nodes::BasicEvent> events;
        std::vector<std::size_t> cut; // of those the texts are not whole
    };

    void onWritten(const QString &error);
    void onClosed(const QString &error);
    Portion next();
    void fail(const QString &error);

    QPointer<const WidgetEventModel> m_model;
    const std::vector<std::uint32_t> m_rows;
    std::size_t m_done = 0;
    QThread m_thread;
    EventCsvFile *m_file; // lives on the thread, deleted when that ends
    QString m_error;
    bool m_isEnded = false;
};

} // namespace Widgets
