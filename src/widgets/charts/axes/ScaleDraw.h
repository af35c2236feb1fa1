#pragma once

#include "widgets/WidgetsExport.h"

#include <QColor>
#include <qwt_scale_draw.h>

#include <string>

namespace Widgets {

/// Scale of an axis with labels of its own colour. GUI thread.
class WIDGETS_EXPORT ScaleDraw : public QwtScaleDraw
{
public:
    explicit ScaleDraw(const QColor &color) : m_color(color) {}

    const QColor &color() const { return m_color; }
    void setColor(const QColor &color);
    /// Empty: the default one. What is no format counts as empty.
    virtual void setFormat(const std::string &format) = 0;

protected:
    /// That text in the colour of the labels.
    QwtText colored(const QString &text) const;

private:
    QColor m_color;
};

} // namespace Widgets
