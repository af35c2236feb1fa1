#pragma once

#include "widgets/reports/engine/layout/BandImage.h"
#include "widgets/reports/engine/template/ReportTemplate.h"

namespace LimeReport {

/// The sheet that is being filled, from top to bottom. Units: 0.1 mm.
class SheetFlow
{
public:
    SheetFlow(const TemplatePage &page, int index);

    /// An empty sheet; `footer` is kept free below.
    void open(double footer);
    PrintedPage take();
    bool isOpen() const { return m_isOpen; }

    /// Below what stands there.
    void put(const BandImage &image);
    void putAt(const BandImage &image, const QPointF &place);
    void advanceTo(double y) { m_y = y; }

    /// What has been put so far does not count as contents: headers.
    void markFresh() { m_freshY = m_y; }
    bool isFresh() const { return m_y <= m_freshY; }

    double y() const { return m_y; }
    double left() const { return m_printed.left(); }
    double width() const { return m_printed.width(); }
    /// Where the footer begins.
    double bottom() const { return m_bottom; }
    double room() const { return m_bottom - m_y; }
    /// Of a sheet that has its headers only.
    double fullRoom() const { return m_bottom - m_freshY; }

private:
    const TemplatePage &m_page;
    QRectF m_printed;
    PrintedPage m_sheet;
    int m_index;
    double m_y = 0, m_freshY = 0, m_bottom = 0;
    bool m_isOpen = false;
};

} // namespace LimeReport
