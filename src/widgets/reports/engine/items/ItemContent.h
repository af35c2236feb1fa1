#pragma once

#include <QString>
#include <QVariantMap>

namespace LimeReport {

class ContentExpander;
class ReportScope;
struct ItemFault;

/// What drawn items have in common. No state.
namespace ItemContent {

/// The value that an item shows: of `datasource` and `field` when it tells them, else of `content`.
/// Invalid for no value.
QVariant valueOf(const QVariantMap &properties, const char *content, ReportScope &scope,
                 ContentExpander &expander);
/// What resolve gives for an item that can't be drawn, with the error told.
QVariantMap refused(ReportScope &scope, const ItemFault &fault);

} // namespace ItemContent

} // namespace LimeReport
