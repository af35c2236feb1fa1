#pragma once

#include "nodes/events/BasicEvent.h"

#include <QObject>
#include <QSaveFile>

#include <memory>
#include <vector>

namespace Nodes {
class JournalReader;
}

namespace Widgets {

/// File that an export of events writes, on a thread of its own. Each order is answered with an
/// error text, "" for success.
class EventCsvFile : public QObject
{
    Q_OBJECT

public:
    explicit EventCsvFile(std::unique_ptr<Nodes::JournalReader> journal);
    ~EventCsvFile() override;

    void open(const QString &name);
    /// `cut`: indices of events whose texts are to be read whole.
    void write(std::vector<Nodes::BasicEvent> events, const std::vector<std::size_t> &cut);
    /// `isKept` false: nothing of it stays.
    void close(bool isKept);

signals:
    void written(const QString &error);
    void closed(const QString &error);

private:
    QString error() const;
    bool complete(Nodes::BasicEvent &event);

    std::unique_ptr<Nodes::JournalReader> m_journal;
    std::unique_ptr<QSaveFile> m_file;
};

} // namespace Widgets
