#pragma once

#include <QString>

class QWidget;

namespace Widgets::ReportFileDialog {

/// Asks where to save; "" when the operator does not want to. `name` is what is proposed, with its
/// ending. GUI thread.
QString ask(QWidget *element, const QString &caption, const QString &name, const QString &ending);

} // namespace Widgets::ReportFileDialog
