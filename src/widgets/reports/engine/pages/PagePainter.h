#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/engine/pages/PageItem.h"
#include "widgets/reports/engine/template/ReportTemplate.h"

#include <memory>
#include <vector>

class QPainter;

namespace LimeReport {

class PictureCache;
struct TextStyle;

/// Paints pages, on whatever the painter paints on. Keeps fonts and decoded pictures, so every
/// thread has one of its own.
class WIDGETS_EXPORT PagePainter
{
public:
    explicit PagePainter(ReportTemplatePtr report);
    ~PagePainter();

    /// One unit of the painter is 0.1 mm, its origin the corner of the sheet. Only what touches
    /// `exposed` is painted. The sheet's colour is the caller's.
    void paint(QPainter &painter, const PrintedPage &page, const QRectF &exposed);

private:
    void paintItem(QPainter &painter, const PageItem &item);
    void paintText(QPainter &painter, const PageItem &item, const TemplateItem &source);
    void paintImage(QPainter &painter, const PageItem &item, const TemplateItem &source);
    void paintDrawn(QPainter &painter, const PageItem &item, const TemplateItem &source);
    const TextStyle &textStyle(const TemplateItem &source);

    ReportTemplatePtr m_report;
    std::vector<const TemplateItem *> m_items;
    std::vector<std::unique_ptr<TextStyle>> m_styles;
    std::unique_ptr<PictureCache> m_pictures;
};

} // namespace LimeReport
