#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

class QLabel;
class QProgressBar;

namespace Widgets {

/// How far a long export has come, with a way to end it. Closing it is asking for that, too. GUI
/// thread.
class WIDGETS_EXPORT ExportProgress : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "exportProgress";

    explicit ExportProgress(QWidget *parent = nullptr);

    void setText(const QString &text);
    void setPercent(int percent);

signals:
    void cancelled();

public slots:
    void reject() override;

private:
    QLabel *m_text;
    QProgressBar *m_bar;
};

} // namespace Widgets
