#pragma once

#include "widgets/dialogs/CsvFile.h"

#include "nodes/events/BasicEvent.h"

#include <memory>
#include <vector>

namespace Nodes {
class JournalReader;
}

namespace Widgets {

/// File of events whose long texts are read from the journal as they are written.
class EventCsvFile : public CsvFile
{
    Q_OBJECT

public:
    explicit EventCsvFile(std::unique_ptr<Nodes::JournalReader> journal);
    ~EventCsvFile() override;

    /// `cut`: indices of events whose texts are to be read whole.
    void writeEvents(std::vector<Nodes::BasicEvent> events, const std::vector<std::size_t> &cut);

private:
    bool complete(Nodes::BasicEvent &event);

    std::unique_ptr<Nodes::JournalReader> m_journal;
};

} // namespace Widgets
