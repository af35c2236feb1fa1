#include "widgets/charts/aids/HistoryAsker.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/system/systemCore.h"

namespace Widgets {

HistoryAsker::HistoryAsker(QObject *parent) : QObject(parent) {}

HistoryAsker::~HistoryAsker()
{
    m_inquiry.Cancel();
}

Nodes::Result HistoryAsker::ask(Nodes::systemCore *model, const Nodes::HistoryRequest &request)
{
    if (!model)
        return Nodes::Result(Nodes::Result::NotAvailable);
    const unsigned number = ++m_number;
    // Runs on the history's thread, never after Cancel: this object is there.
    const Nodes::Result result = m_inquiry.Ask(
        model->GetHistory(), request,
        [this, number](const std::shared_ptr<const Nodes::HistoryAnswer> &answer) {
            QMetaObject::invokeMethod(
                this, [this, number, answer] { onArrived(number, answer); }, Qt::QueuedConnection);
        });
    m_isAsking = result.IsSuccess();
    return result;
}

void HistoryAsker::cancel()
{
    ++m_number;
    m_isAsking = false;
    m_inquiry.Cancel();
}

void HistoryAsker::onArrived(unsigned number,
                             const std::shared_ptr<const Nodes::HistoryAnswer> &answer)
{
    if (number != m_number)
        return;
    m_isAsking = false;
    emit answered(answer);
}

} // namespace Widgets
