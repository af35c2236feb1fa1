#pragma once

#include <QStringList>

namespace LimeReport {

struct TemplateItem;

/// Properties of an item that nothing here pays attention to, although they may change what is
/// printed elsewhere. Empty for classes that read their properties themselves.
QStringList unknownProperties(const TemplateItem &item);

} // namespace LimeReport
