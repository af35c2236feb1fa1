#include "widgets/elements/input/ValueWriter.h"

#include "widgets/context/ActionSink.h"
#include "widgets/context/SceneContext.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"

#include "nodes/visual/BasicWidget.h"

#include <QAbstractButton>
#include <QPointer>
#include <QSignalBlocker>

namespace Widgets {

namespace {

constexpr int codeNoRights = 1320;
constexpr int codeSilent = 403;

} // namespace

bool ValueWriter::write(QWidget &element, const SceneContext &context, Nodes::BasicWidget &node,
                        const Nodes::SignalValue &value, const std::function<void()> &restore)
{
    const Nodes::Result result =
        context.actions().write(node, [&] { return node.WriteValue(value); });
    if (result) {
        runAfterWrite(element, context, node);
        return true;
    }
    const QPointer<QWidget> alive(&element);
    report(context, result);
    if (alive && restore) {
        const QSignalBlocker blocker(&element);
        restore();
    }
    return false;
}

std::unique_ptr<PlainMessageBox> ValueWriter::question(const QString &shownValue,
                                                       const QWidget &element)
{
    DialogRequest request;
    request.element = &element;
    std::unique_ptr<PlainMessageBox> box(Dialogs::make<PlainMessageBox>(request));
    box->setQuestion(QStringLiteral("Новое значение"),
                     QStringLiteral("Установить значение %1 ?").arg(shownValue),
                     QStringLiteral("Установить"));
    return box;
}

void ValueWriter::runAfterWrite(const QWidget &element, const SceneContext &context,
                                const Nodes::BasicWidget &node)
{
    if (context.isRuntime())
        context.actions().trigger(node.GetAfterWriteActions(), &element, std::nullopt);
}

void ValueWriter::report(const SceneContext &context, const Nodes::Result &result)
{
    if (result || result.GetCode() == codeSilent)
        return;
    QString text = result.GetCode() == codeNoRights
                       ? QStringLiteral("Недостаточно прав")
                       : QString::fromStdString(result.GetResultTranslated());
    if (result == Nodes::Result::OutOfRange) // the value and its limits, which need no language
        text += QLatin1Char('\n') + QString::fromStdString(result.GetDetail());
    context.actions().warn(text);
}

} // namespace Widgets
