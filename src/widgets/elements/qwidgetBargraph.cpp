#include "widgets/elements/qwidgetBargraph.h"

#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/painting/BargraphPainter.h"
#include "widgets/elements/painting/ElementPainting.h"

#include "nodes/visual/elements/widgetBargraph.h"
#include "utils/convert/ValueConversions.h"

#include <QPainter>

namespace Widgets {

qwidgetBargraph::qwidgetBargraph(Nodes::widgetBargraph *node, QWidget *parent,
                                 const SceneContextPtr &context)
    : QWidget(parent),
      IWidget(node, context),
      m_bargraph(node),
      m_look(std::make_unique<BargraphLook>()),
      m_alarms([this] { onValueUpdated(Nodes::SignalValue()); })
{
    setAttribute(Qt::WA_NoSystemBackground);
    m_binding.bind(this, m_bargraph.get());
    qwidgetBargraph::onUpdateProperties(nullptr);
}

qwidgetBargraph::~qwidgetBargraph() = default;

QString qwidgetBargraph::shownText() const
{
    return m_text;
}

void qwidgetBargraph::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
}

void qwidgetBargraph::onUpdateProperties(Nodes::BasicProperty *)
{
    if (!m_bargraph)
        return;
    m_alarms.setSignals({m_bargraph->GetSignal()});
    m_borderWidth = m_bargraph->GetBorderWidth();
    m_borderColor = Utils::NColorToQColor(m_bargraph->GetBorderColor());
    m_backgroundColor = Utils::NColorToQColor(m_bargraph->GetBackgroundColor());
    setGeometry(Utils::NRectToQRect(m_bargraph->GetGeometry()));
    m_look->isVertical = m_bargraph->GetOrientation() == Nodes::widgetBargraph::Vertical;
    m_look->minimum = m_bargraph->GetMinimum();
    m_look->maximum = m_bargraph->GetMaximum();
    m_look->zones = m_bargraph->GetZones();
    m_look->hasScale = m_bargraph->GetShowScale();
    m_look->font = Utils::NFontToQFont(m_bargraph->GetFont());
    m_look->textColor = Utils::NColorToQColor(m_bargraph->GetTextColor());
    m_look->barColor = Utils::NColorToQColor(m_bargraph->GetBarColor());
    takeValue(Nodes::SignalValue());
    DirectPainting::repaint(*this);
}

void qwidgetBargraph::takeValue(const Nodes::SignalValue &handed)
{
    const Nodes::SignalValue value = take(*m_bargraph, handed);
    m_quality = value.GetQuality(); // without a signal there is nothing to show
    m_look->mark = m_bargraph->GetAlarmMark(value);
    m_look->quality = m_quality;
    m_look->value = value.ToDouble();
    m_text = QString::fromStdString(m_bargraph->GetDisplayText(value));
    m_look->text = m_bargraph->GetShowValue() ? m_text : QString();
    m_look->setPoint.reset();
    if (const auto setPoint = m_bargraph->GetSetPoint()) {
        m_look->isSetPointGood = setPoint->IsGood();
        if (setPoint->GetQuality() != Nodes::Quality::Bad)
            m_look->setPoint = setPoint->ToDouble();
    }
}

void qwidgetBargraph::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_bargraph)
        return;
    takeValue(handed);
    DirectPainting::repaint(*this);
}

void qwidgetBargraph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintDirectly(painter);
}

void qwidgetBargraph::paintDirectly(QPainter &painter)
{
    painter.save();
    if (m_backgroundColor.alpha() > 0)
        painter.fillRect(rect(), m_backgroundColor);
    if (m_bargraph) {
        const int margin = qMax(0, m_borderWidth) + 2;
        m_look->box = rect().adjusted(margin, margin, -margin, -margin);
        BargraphPainter(painter, *m_look).draw();
        ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
        if (m_bargraph->isDisabled())
            ElementPainting::drawDisabledCover(painter, rect());
    }
    painter.restore();
}

bool qwidgetBargraph::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QWidget::event(event);
}

} // namespace Widgets
