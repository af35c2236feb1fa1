#pragma once

#include "widgets/reports/engine/pages/PagePainter.h"
#include "widgets/reports/engine/pages/PageStore.h"

#include <QAbstractScrollArea>
#include <QCache>
#include <QPoint>
#include <QSet>

#include <vector>

namespace LimeReport {

/// Shows the pages of a rendering one below the other and paints only what can be seen. GUI thread;
/// pages that lie on disk are read on another.
class WIDGETS_EXPORT PageView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    enum class Fit { None, Width, Page };

    explicit PageView(QWidget *parent = nullptr);
    ~PageView() override;

    /// Null pages for none. More of them may come: see update().
    void setPages(const ReportTemplatePtr &report, const PageStorePtr &pages);
    /// Takes over pages that have been added since; with `isFinal` also their late texts.
    void updatePages(bool isFinal);
    int pageCount() const { return int(m_tops.size()); }

    int scalePercent() const { return m_percent; }
    /// Keeps what is in the middle where it is.
    void setScalePercent(int percent);
    void setFit(Fit fit);

    /// From 0; -1 without pages.
    int currentPage() const { return m_current; }
    void goTo(int page);

signals:
    void currentPageChanged(int page);
    void pageCountChanged(int count);
    void scalePercentChanged(int percent);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    double pixelsPerUnit() const;
    QRectF pageRect(int page) const; // in the viewport
    int pageAt(double y) const;      // nearest to that place of the contents
    void layOut();
    void applyFit();
    void changeScale(int percent);
    void updateCurrent();
    const PrintedPage *page(int index);
    void load(int index);
    void paintPage(QPainter &painter, int index, const QRect &exposed);

    ReportTemplatePtr m_report;
    PageStorePtr m_pages;
    std::unique_ptr<PagePainter> m_painter;
    QCache<int, PrintedPage> m_cache;
    QSet<int> m_loading;
    std::vector<double> m_tops; // pixels from the top of the contents
    QSizeF m_contents;
    QSizeF m_widest; // units
    int m_percent = 100;
    Fit m_fit = Fit::None;
    int m_current = -1;
    QPoint m_grip;
    bool m_isDragging = false;
};

} // namespace LimeReport
