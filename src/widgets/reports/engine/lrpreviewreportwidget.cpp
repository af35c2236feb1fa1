#include "widgets/reports/engine/lrpreviewreportwidget.h"

namespace LimeReport {

class PreviewReportWidgetPrivate
{
};

PreviewReportWidget::PreviewReportWidget(QWidget *parent) : QWidget(parent) {}

PreviewReportWidget::~PreviewReportWidget() = default;

int PreviewReportWidget::pageCount() const
{
    return 0;
}

int PreviewReportWidget::currentPage() const
{
    return 0;
}

int PreviewReportWidget::scalePercent() const
{
    return 100;
}

void PreviewReportWidget::refreshPages() {}
void PreviewReportWidget::zoomIn() {}
void PreviewReportWidget::zoomOut() {}
void PreviewReportWidget::firstPage() {}
void PreviewReportWidget::priorPage() {}
void PreviewReportWidget::nextPage() {}
void PreviewReportWidget::lastPage() {}
void PreviewReportWidget::pageNavigatorChanged(int page) {}
void PreviewReportWidget::print() {}
void PreviewReportWidget::printToPDF() {}
void PreviewReportWidget::setScalePercent(int percent) {}
void PreviewReportWidget::fitWidth() {}
void PreviewReportWidget::fitPage() {}

void PreviewReportWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
}

} // namespace LimeReport
