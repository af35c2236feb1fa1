#include "widgets/reports/engine/expressions/ScriptInputs.h"

#include "widgets/reports/engine/expressions/AggregateBook.h"
#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/expressions/ValueText.h"

namespace LimeReport {

namespace {

ScopeValue aggregateOf(const AggregateRequest &request, ReportScope &scope,
                       const AggregateBook *book)
{
    ScopeValue result;
    if (!book) {
        result.error = QStringLiteral("итоги здесь спросить нельзя");
        return result;
    }
    const bool isAhead = scope.place().isAhead;
    const QString key =
        QStringLiteral("%1|%2|%3").arg(int(request.function)).arg(request.band, request.expression);
    const auto &kept = scope.position().aggregates;
    const auto earlier = kept.constFind(key);
    const bool isKept = scope.pageCount() && !isAhead && earlier != kept.constEnd();
    const AggregateValue told = isKept ? earlier.value() : book->value(request, scope);
    if (!isKept && !isAhead)
        scope.keepAggregate(key, told);
    result.value = told.value;
    result.quality = told.quality;
    result.error = told.error;
    result.needsSecondPass = isAhead && !book->isFinished();
    return result;
}

} // namespace

ScriptInputs ScriptInputs::read(const ScriptSource &source, ReportScope &scope,
                                const AggregateBook *aggregates)
{
    using Kind = ScriptInput::Kind;
    ScriptInputs inputs;
    inputs.values.reserve(source.inputs.size());
    for (const ScriptInput &input : source.inputs) {
        const bool isField = input.kind == Kind::Field || input.kind == Kind::FieldText;
        const bool isText = input.kind == Kind::FieldText || input.kind == Kind::VariableText;
        const ScopeValue value = input.kind == Kind::Aggregate
                                     ? aggregateOf(input.aggregate, scope, aggregates)
                                 : isField ? fieldOf(scope, input.name)
                                           : variableOf(scope, input.name);
        if (!value.error.isEmpty()) {
            inputs.error = value.error;
            return inputs;
        }
        inputs.needsSecondPass = inputs.needsSecondPass || value.needsSecondPass;
        if (!value.value.isValid())
            inputs.isMissingAny = true;
        else if (value.quality != Nodes::Quality::Good && inputs.quality != Nodes::Quality::Stale)
            inputs.quality = value.quality;
        inputs.values.append(isText ? QVariant(ValueText::usual(value.value)) : value.value);
    }
    return inputs;
}

} // namespace LimeReport
