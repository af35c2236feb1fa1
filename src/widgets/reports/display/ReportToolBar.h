#pragma once

#include "widgets/reports/display/qwidgetReportDisplay.h"

#include <QToolBar>

class QComboBox;
class QLabel;

namespace Widgets {

/// Keys of a report display, in their order. Who makes it connects them.
class WIDGETS_EXPORT qwidgetReportDisplay::ReportToolBar : public QToolBar
{
public:
    explicit ReportToolBar(QWidget *parent);

    void setReports(const QStringList &names, int current);
    void setInterval(const QString &text);
    /// How far a report is; "" when none is being made. Then there is a key that ends it.
    void setProgress(const QString &text);
    /// There are pages to print, save and turn.
    void setHasPages(bool has);

    QAction *generate;
    QComboBox *reports;
    QAction *interval;
    QAction *print;
    QAction *pdf;
    QAction *prior;
    QAction *next;
    QAction *fitWidth;
    QAction *fitPage;
    QAction *csv;
    QAction *xlsx;
    QAction *cancel;

private:
    QAction *addKey(const QString &text, const char *icon = nullptr);

    QLabel *m_progress;
    QAction *m_progressPlace;
};

} // namespace Widgets
