#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/archive/HistoryInquiry.h"
#include "nodes/archive/HistoryRequest.h"

#include <QMetaType>
#include <QObject>

#include <memory>

namespace Nodes {
struct HistoryAnswer;
class systemCore;
} // namespace Nodes

Q_DECLARE_METATYPE(std::shared_ptr<const Nodes::HistoryAnswer>)

namespace Widgets {

/// Asks the archive and is answered on the GUI thread; asking again replaces what was asked before.
/// A member of the asker. GUI thread.
class WIDGETS_EXPORT HistoryAsker : public QObject
{
    Q_OBJECT

public:
    explicit HistoryAsker(QObject *parent = nullptr);
    ~HistoryAsker() override;

    /// Success: accepted, the answer follows. NotAvailable without a model.
    [[nodiscard]] Nodes::Result ask(Nodes::systemCore *model, const Nodes::HistoryRequest &request);
    void cancel();
    bool isAsking() const { return m_isAsking; }

signals:
    void answered(std::shared_ptr<const Nodes::HistoryAnswer> answer);

private:
    void onArrived(unsigned number, const std::shared_ptr<const Nodes::HistoryAnswer> &answer);

    unsigned m_number = 0; // of the request asked last: an answer on its way may be an older one's
    bool m_isAsking = false;
    Nodes::HistoryInquiry m_inquiry;
};

} // namespace Widgets
