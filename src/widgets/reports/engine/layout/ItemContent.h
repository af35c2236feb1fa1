#pragma once

#include "widgets/reports/engine/expressions/ContentExpander.h"
#include "widgets/reports/engine/template/TemplateItem.h"

namespace LimeReport {

/// The content of a text item with its values put in.
ContentExpander::Expanded expandItem(const TemplateItem &item, ReportScope &scope,
                                     ContentExpander &expander);
/// Whether a content has anything to put in.
bool hasExpressions(const QString &content);

} // namespace LimeReport
