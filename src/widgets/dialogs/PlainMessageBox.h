#pragma once

#include "widgets/WidgetsExport.h"

#include <QMessageBox>

namespace Widgets {

/// Every message box of the station: names, values and errors come from projects and devices and
/// are shown letter by letter, never as markup. GUI thread.
class WIDGETS_EXPORT PlainMessageBox : public QMessageBox
{
    Q_OBJECT

public:
    PlainMessageBox(Icon icon, const QString &title, const QString &text,
                    StandardButtons buttons = Ok, QWidget *parent = nullptr,
                    Qt::WindowFlags flags = Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint);

    /// Modal; the button pressed.
    static StandardButton ask(Icon icon, const QString &title, const QString &text,
                              StandardButtons buttons = Ok, QWidget *parent = nullptr,
                              StandardButton preset = NoButton);
};

} // namespace Widgets
