#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"
#include "nodes/journal/JournalQuery.h"
#include "nodes/values/Result.h"

#include <QMetaType>
#include <QObject>
#include <QThreadPool>

#include <memory>
#include <vector>

namespace Nodes {
class EventJournal;
class JournalReader;
} // namespace Nodes

Q_DECLARE_METATYPE(std::vector<Nodes::BasicEvent>)

namespace Widgets {

/// Asks the journal on a thread of its own and is answered on the GUI thread; asking again replaces
/// what was asked before. A member of the asker. GUI thread.
class WIDGETS_EXPORT JournalAsker : public QObject
{
    Q_OBJECT

public:
    explicit JournalAsker(QObject *parent = nullptr);
    ~JournalAsker() override;

    /// The journal outlives this object.
    void ask(const Nodes::EventJournal &journal, const Nodes::JournalQuery &query);

signals:
    void answered(Nodes::Result result, std::vector<Nodes::BasicEvent> events);

private:
    struct Reading;
    class Task;

    std::shared_ptr<Reading> m_reading;
    unsigned m_number = 0; // of the question asked last
    QThreadPool m_threads; // one: a reader serves one at a time
};

} // namespace Widgets
