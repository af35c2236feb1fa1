#pragma once

#include <QColor>
#include <QWidget>

namespace Widgets {

/// Over all parts of a chart: its frame, and the grey of a disabled one. Takes no input. GUI
/// thread.
class ChartCover : public QWidget
{
    Q_OBJECT

public:
    explicit ChartCover(QWidget *chart);

    void setLook(int borderWidth, const QColor &border, bool isDisabled);
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_borderWidth = 0;
    QColor m_border;
    bool m_isDisabled = false;
};

} // namespace Widgets
