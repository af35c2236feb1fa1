#include "widgets/reports/engine/preview/PageView.h"

#include "widgets/reports/engine/preview/PageLoader.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace LimeReport {

namespace {

constexpr int KeptPages = 24;
constexpr int Gap = 16; // pixels between pages and around them
constexpr int SmallestPercent = 10, LargestPercent = 800;
constexpr double UnitsPerInch = 254;

const QColor Desk(0x9a, 0x9e, 0xa2);
const QColor Edge(0x6e, 0x72, 0x76);

} // namespace

PageView::PageView(QWidget *parent) : QAbstractScrollArea(parent), m_cache(KeptPages)
{
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setCursor(Qt::OpenHandCursor);
}

PageView::~PageView() = default;

void PageView::setPages(const ReportTemplatePtr &report, const PageStorePtr &pages)
{
    m_report = report;
    m_pages = pages;
    m_painter = report ? std::make_unique<PagePainter>(report) : nullptr;
    m_cache.clear();
    m_loading.clear();
    m_tops.clear();
    m_current = -1;
    verticalScrollBar()->setValue(0);
    updatePages(true);
}

void PageView::updatePages(bool isFinal)
{
    const int before = pageCount();
    const int count = m_pages ? m_pages->count() : 0;
    if (isFinal)
        m_cache.clear();
    m_tops.resize(std::size_t(count));
    m_widest = QSizeF();
    for (int index = 0; index < count; ++index)
        m_widest = m_widest.expandedTo(m_pages->size(index));
    applyFit();
    layOut();
    viewport()->update();
    if (count != before)
        emit pageCountChanged(count);
    updateCurrent();
}

double PageView::pixelsPerUnit() const
{
    return logicalDpiX() / UnitsPerInch * m_percent / 100;
}

void PageView::layOut()
{
    const double scale = pixelsPerUnit();
    double y = Gap;
    for (std::size_t index = 0; index < m_tops.size(); ++index) {
        m_tops[index] = y;
        y += std::ceil(m_pages->size(int(index)).height() * scale) + Gap;
    }
    m_contents = QSizeF(m_widest.width() * scale + 2 * Gap, m_tops.empty() ? 0 : y);
    const QSize room = viewport()->size();
    verticalScrollBar()->setRange(0,
                                  std::max(0, int(std::ceil(m_contents.height())) - room.height()));
    verticalScrollBar()->setPageStep(room.height());
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setRange(0,
                                    std::max(0, int(std::ceil(m_contents.width())) - room.width()));
    horizontalScrollBar()->setPageStep(room.width());
    horizontalScrollBar()->setSingleStep(40);
}

QRectF PageView::pageRect(int page) const
{
    const double scale = pixelsPerUnit();
    const QSizeF size = m_pages->size(page) * scale;
    const double across = std::max(m_contents.width(), double(viewport()->width()));
    return QRectF(std::floor((across - size.width()) / 2) - horizontalScrollBar()->value(),
                  std::floor(m_tops[std::size_t(page)]) - verticalScrollBar()->value(),
                  std::ceil(size.width()), std::ceil(size.height()));
}

int PageView::pageAt(double y) const
{
    const auto next = std::upper_bound(m_tops.begin(), m_tops.end(), y);
    return std::max(0, int(next - m_tops.begin()) - 1);
}

void PageView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), Desk);
    if (m_tops.empty())
        return;
    const double top = event->rect().top() + verticalScrollBar()->value();
    for (int index = pageAt(top); index < pageCount(); ++index) {
        if (pageRect(index).top() > event->rect().bottom())
            break;
        paintPage(painter, index, event->rect());
    }
}

void PageView::paintPage(QPainter &painter, int index, const QRect &exposed)
{
    const QRectF sheet = pageRect(index);
    painter.setPen(Edge);
    painter.setBrush(Qt::white);
    painter.drawRect(sheet.adjusted(-1, -1, 0, 0));
    const QRectF seen = sheet & QRectF(exposed);
    const PrintedPage *contents = seen.isEmpty() ? nullptr : page(index);
    if (!contents)
        return;
    const double scale = pixelsPerUnit();
    painter.save();
    painter.setClipRect(seen);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(sheet.topLeft());
    painter.scale(scale, scale);
    const QRectF units(
        QPointF((seen.left() - sheet.left()) / scale, (seen.top() - sheet.top()) / scale),
        seen.size() / scale);
    m_painter->paint(painter, *contents, units);
    painter.restore();
}

const PrintedPage *PageView::page(int index)
{
    if (const PrintedPage *kept = m_cache.object(index))
        return kept;
    if (m_pages->isOnDisk(index)) {
        load(index);
        return nullptr;
    }
    m_cache.insert(index, new PrintedPage(m_pages->page(index)));
    return m_cache.object(index);
}

void PageView::load(int index)
{
    if (m_loading.contains(index))
        return;
    m_loading.insert(index);
    auto *loader = new PageLoader(m_pages, index);
    connect(loader, &PageLoader::loaded, this,
            [this, pages = m_pages](int loaded, const PrintedPage &contents) {
                if (pages != m_pages)
                    return;
                m_loading.remove(loaded);
                m_cache.insert(loaded, new PrintedPage(contents));
                viewport()->update();
            });
    loader->start();
}

void PageView::updateCurrent()
{
    // The page that takes the middle of the view.
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    int now = m_tops.empty() ? -1 : pageAt(middle);
    if (now > 0 && verticalScrollBar()->value() == 0)
        now = 0;
    if (now == m_current)
        return;
    m_current = now;
    emit currentPageChanged(now);
}

void PageView::goTo(int page)
{
    if (m_tops.empty())
        return;
    const int wanted = qBound(0, page, pageCount() - 1);
    verticalScrollBar()->setValue(int(m_tops[std::size_t(wanted)]) - Gap);
    updateCurrent();
    // The last pages can be too low for the view to get to them.
    if (m_current != wanted) {
        m_current = wanted;
        emit currentPageChanged(wanted);
    }
}

void PageView::setScalePercent(int percent)
{
    m_fit = Fit::None;
    changeScale(percent);
}

void PageView::changeScale(int percent)
{
    const int wanted = qBound(SmallestPercent, percent, LargestPercent);
    if (wanted == m_percent)
        return;
    QScrollBar *bar = verticalScrollBar();
    const double middle = bar->value() + viewport()->height() / 2.0;
    const int held = m_tops.empty() ? 0 : pageAt(middle);
    const double part =
        m_tops.empty() ? 0 : (middle - m_tops[std::size_t(held)]) / pageRect(held).height();
    const bool isAtTop = bar->value() == 0;
    m_percent = wanted;
    layOut();
    if (!m_tops.empty() && !isAtTop)
        bar->setValue(int(m_tops[std::size_t(held)] + part * pageRect(held).height() -
                          viewport()->height() / 2.0));
    viewport()->update();
    emit scalePercentChanged(m_percent);
    updateCurrent();
}

void PageView::setFit(Fit fit)
{
    m_fit = fit;
    applyFit();
}

void PageView::applyFit()
{
    if (m_fit == Fit::None || m_widest.isEmpty() || viewport()->width() < 2 * Gap + 8)
        return;
    const double unit = logicalDpiX() / UnitsPerInch;
    const int bar = verticalScrollBar()->isVisible() ? 0 : verticalScrollBar()->sizeHint().width();
    double scale = (viewport()->width() - bar - 2 * Gap) / (m_widest.width() * unit);
    if (m_fit == Fit::Page)
        scale = std::min(scale, (viewport()->height() - 2 * Gap) / (m_widest.height() * unit));
    changeScale(int(scale * 100));
}

} // namespace LimeReport
