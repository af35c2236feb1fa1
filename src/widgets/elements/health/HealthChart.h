#pragma once

#include "widgets/WidgetsExport.h"

#include <QColor>
#include <QWidget>

namespace Widgets {

/// Base of the small charts of alarm health: look and text size. GUI thread.
class WIDGETS_EXPORT HealthChart : public QWidget
{
    Q_OBJECT

public:
    explicit HealthChart(QWidget *parent = nullptr);

protected:
    static const QColor ground;
    static const QColor frame;
    static const QColor ink;
    static const QColor grid;
    static const QColor normalBar;
    static const QColor abnormalBar;

    /// What is shown in place of a chart.
    void drawNothing(QPainter &painter, const QString &why) const;
    void drawGround(QPainter &painter) const;
    /// Text cut to the place's width.
    static void drawText(QPainter &painter, const QRect &place, int flags, const QString &text);
};

} // namespace Widgets
