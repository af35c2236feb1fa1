#include "widgets/reports/engine/lrpreviewreportwidget.h"

#include "widgets/reports/engine/preview/PreviewBody.h"

#include <QVBoxLayout>

namespace LimeReport {

namespace {

constexpr double ZoomStep = 1.2;

} // namespace

PreviewReportWidget::PreviewReportWidget(ReportDesk &desk, QWidget *parent)
    : QWidget(parent), d(new PreviewBody(desk, this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d);
    setFocusProxy(&d->view());
    const PageView *view = &d->view();
    connect(view, &PageView::currentPageChanged, this,
            [this](int page) { emit pageChanged(page + 1); });
    connect(view, &PageView::pageCountChanged, this, &PreviewReportWidget::pagesSet);
    connect(view, &PageView::scalePercentChanged, this, &PreviewReportWidget::scalePercentChanged);
    connect(d, &PreviewBody::outputFinished, this, &PreviewReportWidget::outputFinished);
}

PreviewReportWidget::~PreviewReportWidget() = default;

int PreviewReportWidget::pageCount() const
{
    return d->view().pageCount();
}

int PreviewReportWidget::currentPage() const
{
    return d->view().currentPage() + 1;
}

int PreviewReportWidget::scalePercent() const
{
    return d->view().scalePercent();
}

void PreviewReportWidget::refreshPages()
{
    d->refresh();
}

void PreviewReportWidget::zoomIn()
{
    setScalePercent(qRound(scalePercent() * ZoomStep));
}

void PreviewReportWidget::zoomOut()
{
    setScalePercent(qRound(scalePercent() / ZoomStep));
}

void PreviewReportWidget::firstPage()
{
    d->view().goTo(0);
}

void PreviewReportWidget::priorPage()
{
    d->view().goTo(d->view().currentPage() - 1);
}

void PreviewReportWidget::nextPage()
{
    d->view().goTo(d->view().currentPage() + 1);
}

void PreviewReportWidget::lastPage()
{
    d->view().goTo(pageCount() - 1);
}

void PreviewReportWidget::pageNavigatorChanged(int page)
{
    d->view().goTo(page - 1);
}

void PreviewReportWidget::print()
{
    d->askPrinter();
}

void PreviewReportWidget::printToPDF()
{
    d->askFile();
}

void PreviewReportWidget::savePdf(const QString &file)
{
    d->save(file);
}

void PreviewReportWidget::setScalePercent(int percent)
{
    d->view().setScalePercent(percent);
}

void PreviewReportWidget::fitWidth()
{
    d->view().setFit(PageView::Fit::Width);
}

void PreviewReportWidget::fitPage()
{
    d->view().setFit(PageView::Fit::Page);
}

} // namespace LimeReport
