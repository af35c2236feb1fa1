#pragma once

#include "widgets/charts/axes/ScaleDraw.h"

#include "nodes/values/NumberFormat.h"

namespace Widgets {

/// Labels of a value axis: a space and the number by a printf format. With one that is none the
/// labels are those of the default.
class WIDGETS_EXPORT ValueScaleDraw : public ScaleDraw
{
public:
    static constexpr const char *DefaultFormat = "%3.2f";

    ValueScaleDraw(const QColor &color, const std::string &format);

    void setFormat(const std::string &format) override;
    QwtText label(double value) const override;

private:
    Nodes::NumberFormat m_format;
};

} // namespace Widgets
