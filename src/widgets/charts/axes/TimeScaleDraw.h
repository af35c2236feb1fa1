#pragma once

#include "widgets/charts/axes/ScaleDraw.h"

namespace Widgets {

/// Labels of a time axis: local times by a format of QDateTime, in which the two characters "\n"
/// begin a new line.
class WIDGETS_EXPORT TimeScaleDraw : public ScaleDraw
{
public:
    static constexpr const char *DefaultFormat = "hh:mm:ss";

    /// The format that tells the moments between two X of ChartTime at `now`: the one given, which
    /// may be empty, and where it has no date and they are not all of today, one with their dates.
    static std::string formatFor(const std::string &given, double from, double to, double now);

    TimeScaleDraw(const QColor &color, const std::string &format);

    void setFormat(const std::string &format) override;
    const QString &format() const { return m_format; }
    QwtText label(double value) const override;

private:
    QString m_format;
};

} // namespace Widgets
