#include "widgets/charts/elements/ChartCover.h"

#include "widgets/elements/painting/ElementPainting.h"

#include <QEvent>
#include <QPainter>

namespace Widgets {

ChartCover::ChartCover(QWidget *chart) : QWidget(chart)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    chart->installEventFilter(this);
}

void ChartCover::setLook(int borderWidth, const QColor &border, bool isDisabled)
{
    m_borderWidth = borderWidth;
    m_border = border;
    m_isDisabled = isDisabled;
    setVisible(isDisabled || borderWidth > 0);
    raise();
    update();
}

bool ChartCover::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void ChartCover::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    ElementPainting::drawBorder(painter, size(), m_borderWidth, m_border);
    if (m_isDisabled)
        ElementPainting::drawDisabledCover(painter, rect());
}

} // namespace Widgets
