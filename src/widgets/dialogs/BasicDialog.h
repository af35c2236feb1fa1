#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/DialogManners.h"

#include <QDialog>

namespace Widgets {

/// Base of the library's own dialogs. GUI thread.
class WIDGETS_EXPORT BasicDialog : public QDialog, public DialogManners
{
    Q_OBJECT

public:
    explicit BasicDialog(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace Widgets
