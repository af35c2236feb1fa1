#pragma once

#include "widgets/charts/axes/ScaleDraw.h"

namespace Widgets {

/// Labels of a time axis: local times by a format of QDateTime, in which the two characters "\n"
/// begin a new line.
class WIDGETS_EXPORT TimeScaleDraw : public ScaleDraw
{
public:
    static constexpr const char *DefaultFormat = "hh:mm:ss";

    TimeScaleDraw(const QColor &color, const std::string &format);

    void setFormat(const std::string &format) override;
    const QString &format() const { return m_format; }
    QwtText label(double value) const override;

private:
    QString m_format;
};

} // namespace Widgets
