#include "widgets/reports/engine/expressions/ContentExpander.h"

#include "widgets/reports/engine/expressions/ContentCache.h"
#include "widgets/reports/engine/expressions/ReportErrors.h"
#include "widgets/reports/engine/expressions/ScopeValues.h"
#include "widgets/reports/engine/expressions/ScriptInputs.h"
#include "widgets/reports/engine/expressions/ScriptRunner.h"
#include "widgets/reports/engine/expressions/ValueText.h"

#include "nodes/archive/QualityOrder.h"

#include <mutex>

namespace LimeReport {

namespace {

constexpr int shownCode = 80; // characters in an error

// A text that a missing value got into shows so, not the script language's word for it.
QVariant withoutWords(const QVariant &value)
{
    if (value.type() != QVariant::String)
        return value;
    return value.toString()
        .replace(QLatin1String("undefined"), ValueText::nothing)
        .replace(QLatin1String("NaN"), ValueText::nothing);
}

QString placed(const ContentPlace &place, const QString &expression, const QString &error)
{
    QString shown = expression.simplified();
    if (shown.size() > shownCode)
        shown = shown.left(shownCode) + QStringLiteral("...");
    const QString where =
        place.item.isEmpty()
            ? QStringLiteral("полоса «%1»").arg(place.band)
            : QStringLiteral("полоса «%1», элемент «%2»").arg(place.band, place.item);
    return QStringLiteral("%1: %2: %3").arg(where, shown, error);
}

} // namespace

struct ContentExpander::Part
{
    explicit Part(AggregateBook *book, const ScriptLimits &bounds)
        : aggregates(book), limits(bounds)
    {
    }

    ScopeValue evaluate(const ContentPiece &piece, ReportScope &scope);
    ScopeValue runScript(const QString &script, ReportScope &scope);
    ScriptRunner &runner();

    AggregateBook *const aggregates;
    const ScriptLimits limits;
    ContentCache cache;
    std::mutex mutex; // of the runner's making and of cancelling
    std::unique_ptr<ScriptRunner> scripts;
    bool isCancelled = false;
};

ContentExpander::ContentExpander(AggregateBook *aggregates, const ScriptLimits &limits)
    : m_part(std::make_unique<Part>(aggregates, limits))
{
}

ContentExpander::~ContentExpander() = default;

void ContentExpander::cancel()
{
    const std::lock_guard lock(m_part->mutex);
    m_part->isCancelled = true;
    if (m_part->scripts)
        m_part->scripts->cancel();
}

ScriptRunner &ContentExpander::Part::runner()
{
    const std::lock_guard lock(mutex);
    if (!scripts) {
        scripts = std::make_unique<ScriptRunner>(limits);
        if (isCancelled)
            scripts->cancel();
    }
    return *scripts;
}

ScopeValue ContentExpander::Part::runScript(const QString &script, ReportScope &scope)
{
    ContentCache::Script &known = cache.script(script);
    ScopeValue result;
    result.error = known.source.error;
    if (!result.error.isEmpty())
        return result;
    const ScriptInputs inputs = ScriptInputs::read(known.source, scope, aggregates);
    result.needsSecondPass = inputs.needsSecondPass;
    result.error = inputs.error;
    if (!result.error.isEmpty())
        return result;
    if (known.number < 0)
        known.number = runner().compile(known.source.code, known.source.inputs.size());
    ScriptRunner::Outcome outcome = runner().run(known.number, inputs.values, scope);
    result.error = outcome.error;
    result.needsSecondPass = result.needsSecondPass || outcome.needsSecondPass;
    result.value = inputs.isMissingAny ? withoutWords(outcome.value) : outcome.value;
    result.quality = result.value.isValid() ? inputs.quality : Nodes::Quality::Bad;
    return result;
}

ScopeValue ContentExpander::Part::evaluate(const ContentPiece &piece, ReportScope &scope)
{
    switch (piece.kind) {
    case ContentPiece::Kind::Field:
        return fieldOf(scope, piece.body.trimmed());
    case ContentPiece::Kind::Variable:
        return variableOf(scope, piece.body.trimmed());
    case ContentPiece::Kind::Script:
        return runScript(piece.body, scope);
    case ContentPiece::Kind::Text:
        break;
    }
    ScopeValue text;
    text.value = piece.body;
    return text;
}

ContentExpander::Expanded ContentExpander::expand(const QString &content, ReportScope &scope,
                                                  const ContentFormat &format)
{
    if (!scope.pageCount())
        scope.forgetAggregates();
    Expanded expanded;
    const auto told = [&expanded, &scope](const QString &expression, const QString &error) {
        expanded.errors.append(placed(scope.place(), expression, error));
        scope.errors().add(expanded.errors.last());
    };
    const ContentParser::Parsed &parsed = m_part->cache.content(content, format.isHtml);
    for (const QString &error : parsed.errors)
        told(content, error);
    for (const ContentPiece &piece : parsed.pieces) {
        if (piece.kind == ContentPiece::Kind::Text) {
            expanded.text += piece.body;
            continue;
        }
        const ScopeValue value = m_part->evaluate(piece, scope);
        expanded.needsSecondPass = expanded.needsSecondPass || value.needsSecondPass;
        expanded.quality = Nodes::WorseOf(expanded.quality, value.quality);
        QString error = value.error;
        QString text = piece.whole + QStringLiteral(" (!)");
        if (error.isEmpty())
            text =
                ValueText::marked(ValueText::formatted(value.value, format, &error), value.quality);
        if (!error.isEmpty())
            told(piece.whole, error);
        expanded.text += format.isHtml ? text.toHtmlEscaped() : text;
    }
    if (format.isTrimmed)
        expanded.text = expanded.text.trimmed();
    return expanded;
}

QVariant ContentExpander::value(const QString &expression, ReportScope &scope,
                                Nodes::Quality *quality)
{
    const ContentParser::Parsed &parsed = m_part->cache.content(expression, false);
    if (parsed.pieces.size() != 1 || parsed.pieces.first().kind == ContentPiece::Kind::Text) {
        const Expanded expanded = expand(expression, scope);
        if (quality)
            *quality = expanded.quality;
        return expanded.errors.isEmpty() ? QVariant(expanded.text) : QVariant();
    }
    ScopeValue value = m_part->evaluate(parsed.pieces.first(), scope);
    if (!value.error.isEmpty()) {
        scope.errors().add(placed(scope.place(), expression, value.error));
        value.quality = Nodes::Quality::Bad;
        value.value = QVariant();
    }
    if (quality)
        *quality = value.quality;
    return value.value;
}

QString ContentExpander::runInitScript(const QString &script, ReportScope &scope)
{
    const QString error = m_part->runner().runGlobal(script, scope);
    return error.isEmpty() ? error : QStringLiteral("сценарий шаблона: %1").arg(error);
}

} // namespace LimeReport
