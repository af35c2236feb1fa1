#pragma once

#include "widgets/charts/axes/ScaleDraw.h"

namespace Widgets {

/// Labels of an axis on which signals are stacked in bands of 1.5: 0 and 1 in each band. Another
/// axis may lend it its width, so that the canvases of two plots one below the other begin at the
/// same pixel.
class WIDGETS_EXPORT DiscretValueScaleDraw : public ScaleDraw
{
public:
    using ScaleDraw::ScaleDraw;

    /// The labels are what they are.
    void setFormat(const std::string &) override {}
    QwtText label(double value) const override;

    /// Scale draw of the axis to be as wide as; not owned, it has to stay, null: none.
    void setDelegate(const QwtScaleDraw *draw) { m_delegate = draw; }
    const QwtScaleDraw *delegate() const { return m_delegate; }
    double extent(const QFont &font) const override;

private:
    const QwtScaleDraw *m_delegate = nullptr;
};

} // namespace Widgets
