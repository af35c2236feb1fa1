#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

namespace LimeReport {

/// What parsers say of a template, for whoever has to mend it: in Russian, with what to do. What is
/// not known is told in general, the parser's own words behind it. Any thread.
namespace FaultText {

/// Of QXmlStreamReader::errorString; texts that are Russian already stay as they are.
WIDGETS_EXPORT QString xml(const QString &message);
/// Of a script error as the engine words it ("TypeError: ..."); what a script threw itself stays.
WIDGETS_EXPORT QString script(const QString &message);

} // namespace FaultText

} // namespace LimeReport
