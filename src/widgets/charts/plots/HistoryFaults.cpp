#include "widgets/charts/plots/HistoryFaults.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/model/ConfigNode.h"

#include <QStringList>

namespace Widgets::HistoryFaults {

namespace {

constexpr int mostNames = 3;

} // namespace

QString text(const Nodes::Result &refusal)
{
    if (refusal)
        return {};
    return QStringLiteral("Нет данных архива: ") +
           QString::fromStdString(refusal.GetResultTranslated());
}

// Signals with the same fault are told together.
QString text(const Nodes::HistoryAnswer &answer)
{
    if (!answer.result)
        return text(answer.result);
    QStringList names;
    QString why;
    for (const auto &column : answer.columns) {
        if (column->result)
            continue;
        const Nodes::ConfigNode *signal = column->signal.GetNode();
        names << (signal ? QString::fromStdString(signal->GetName())
                         : QString::number(column->signal.GetNodeId()));
        if (why.isEmpty())
            why = QString::fromStdString(column->result.GetResultTranslated());
    }
    if (names.isEmpty())
        return {};
    const int more = names.size() - mostNames;
    QString listed = QStringList(names.mid(0, mostNames)).join(QStringLiteral(", "));
    if (more > 0)
        listed += QStringLiteral(" и ещё %1").arg(more);
    return QStringLiteral("Нет данных архива: %1. %2").arg(listed, why);
}

} // namespace Widgets::HistoryFaults
