#pragma once

#include "widgets/WidgetsExport.h"

#include "widgets/reports/engine/expressions/ContentFormat.h"
#include "widgets/reports/engine/expressions/ExpressionValues.h"
#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/expressions/ScriptLimits.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace LimeReport {

class AggregateBook;

/// Puts values into contents: $D{source.column}, $V{variable}, $S{script}. Values are never taken
/// for expressions, nor pasted into scripts. Contents are taken apart once, scripts compiled once.
/// Made and used on the rendering thread.
class WIDGETS_EXPORT ContentExpander : public ExpressionValues
{
public:
    struct Expanded
    {
        QString text;
        /// Something was not known yet (number of pages, aggregate of rows to come): expand again
        /// with the same ReportScope::Position when the page count is known.
        bool needsSecondPass = false;
        /// With band and item; the expression stands unexpanded and marked in the text. They are in
        /// scope.errors() already.
        QStringList errors;
        /// The worst of the values that were put in.
        Nodes::Quality quality = Nodes::Quality::Good;
    };

    /// `aggregates` outlives this object; without, aggregates are errors.
    explicit ContentExpander(AggregateBook *aggregates = nullptr, const ScriptLimits &limits = {});
    ~ContentExpander() override;

    Expanded expand(const QString &content, ReportScope &scope, const ContentFormat &format = {});
    /// The value of one expression with its type: "$D{a.b}", "$V{x}" or "$S{...}" (group
    /// conditions, images of fields); anything else is expanded to a text. Invalid for no value and
    /// errors.
    QVariant value(const QString &expression, ReportScope &scope,
                   Nodes::Quality *quality = nullptr) override;
    /// Runs a template's own script, whose functions all expressions can call. Returns an error.
    QString runInitScript(const QString &script, ReportScope &scope);

    /// From any thread: the script under way is ended, later ones are refused.
    void cancel();

private:
    struct Part;
    std::unique_ptr<Part> m_part;
};

} // namespace LimeReport
