#include "widgets/reports/engine/layout/SheetFlow.h"

namespace LimeReport {

SheetFlow::SheetFlow(const TemplatePage &page, int index)
    : m_page(page), m_printed(page.printed()), m_index(index)
{
}

void SheetFlow::open(double footer)
{
    m_sheet = PrintedPage();
    m_sheet.page = m_index;
    m_sheet.size = m_page.size;
    m_y = m_freshY = m_printed.top();
    m_bottom = m_printed.bottom() - footer;
    m_isOpen = true;
}

PrintedPage SheetFlow::take()
{
    m_isOpen = false;
    return std::move(m_sheet);
}

void SheetFlow::put(const BandImage &image)
{
    putAt(image, QPointF(m_printed.left(), m_y));
    m_y += image.height;
}

void SheetFlow::putAt(const BandImage &image, const QPointF &place)
{
    for (PageItem item : image.items) {
        item.rect.translate(place);
        m_sheet.items.append(std::move(item));
    }
}

} // namespace LimeReport
