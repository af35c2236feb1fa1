#include "widgets/elements/qwidgetRecorderDigitalDisplay.h"

#include "widgets/context/ActionSink.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/input/ValueWriter.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/painting/RecorderLine.h"

#include "nodes/visual/elements/recorderChannel.h"
#include "nodes/visual/elements/widgetRecorderDigitalDisplay.h"
#include "utils/convert/ValueConversions.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include <utility>
#include <vector>

namespace Widgets {

namespace {

// From what may be relied on to what may not.
int badness(Nodes::Quality quality)
{
    switch (quality) {
    case Nodes::Quality::Good:
        return 0;
    case Nodes::Quality::Uncertain:
        return 1;
    case Nodes::Quality::Stale:
        return 2;
    case Nodes::Quality::Bad:
        break;
    }
    return 3;
}

} // namespace

qwidgetRecorderDigitalDisplay::qwidgetRecorderDigitalDisplay(
    Nodes::widgetRecorderDigitalDisplay *node, QWidget *parent, const SceneContextPtr &context)
    : QWidget(parent),
      IWidget(node, context),
      m_display(node),
      m_alarms([this] { onValueUpdated(Nodes::SignalValue()); })
{
    setAttribute(Qt::WA_NoSystemBackground);
    m_binding.bind(this, m_display.get());
    qwidgetRecorderDigitalDisplay::onUpdateProperties(nullptr);
}

qwidgetRecorderDigitalDisplay::~qwidgetRecorderDigitalDisplay() = default;

QString qwidgetRecorderDigitalDisplay::shownText() const
{
    QStringList texts;
    for (const RecorderLine &line : m_lines)
        texts << (line.value + QLatin1Char(' ') + line.unit).trimmed();
    return texts.join(QLatin1Char('\n'));
}

Nodes::Quality qwidgetRecorderDigitalDisplay::shownQuality() const
{
    Nodes::Quality worst = Nodes::Quality::Good;
    for (const RecorderLine &line : m_lines) {
        if (badness(line.quality) > badness(worst))
            worst = line.quality;
    }
    return worst;
}

QString qwidgetRecorderDigitalDisplay::extremesText(int line) const
{
    return m_lines.at(line).extremes;
}

void qwidgetRecorderDigitalDisplay::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
}

const PropertyBindings &qwidgetRecorderDigitalDisplay::bindings() const
{
    using This = qwidgetRecorderDigitalDisplay;
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<This>(Then::Repaint),
        PropertyRow::takes<&This::takeBorder>(Then::Repaint, Prop::BorderColor, Prop::BorderWidth),
        PropertyRow::takes<&This::takeBackground>(Then::Repaint, Prop::Background),
        PropertyRow::takes<&This::takeText>(Then::Repaint, Prop::FontFamily, Prop::FontSize,
                                            Prop::Bold, Prop::Italic, Prop::Underline,
                                            Prop::StrikeOut, Prop::Color),
        PropertyRow::only(Then::Repaint, Prop::Disabled),
        PropertyRow::only(Then::Value, Prop::Signal, Prop::Extremes),
        // Each line has its own order of texts.
        PropertyRow::only(Then::Nothing, Prop::Align, Prop::Valign),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetRecorderDigitalDisplay::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetRecorderDigitalDisplay *display = m_display.get();
    if (display && takeOver(*display, property))
        DirectPainting::repaint(*this);
}

void qwidgetRecorderDigitalDisplay::takeText(const Nodes::widgetRecorderDigitalDisplay &display)
{
    m_font = Utils::NFontToQFont(display.GetFont());
    m_textColor = Utils::NColorToQColor(display.GetTextColor());
}

void qwidgetRecorderDigitalDisplay::onValueUpdated(Nodes::SignalValue)
{
    if (!m_display)
        return;
    m_lines.clear();
    std::vector<const Nodes::BasicSignal *> shown;
    for (const Nodes::recorderChannel *channel : m_display->GetChannels()) {
        m_lines << RecorderLine::of(*channel, m_display->GetShowExtremes(), isEditor());
        shown.push_back(channel->GetSignal());
    }
    m_alarms.setSignals(shown);
    DirectPainting::repaint(*this);
}

QRect qwidgetRecorderDigitalDisplay::lineRect(int line) const
{
    const int b = qMax(0, m_borderWidth);
    const QRect inner = rect().adjusted(b, b, -b, -b);
    const int count = qMax(1, m_lines.size());
    const int top = inner.height() * line / count;
    return QRect(inner.left(), inner.top() + top, inner.width(),
                 inner.height() * (line + 1) / count - top);
}

QRect qwidgetRecorderDigitalDisplay::resetButton(int line) const
{
    return RecorderLine::resetButton(lineRect(line));
}

int qwidgetRecorderDigitalDisplay::buttonAt(const QPoint &point) const
{
    for (int line = 0; line < m_lines.size(); ++line) {
        if (!m_lines.at(line).extremes.isEmpty() && resetButton(line).contains(point))
            return line;
    }
    return -1;
}

void qwidgetRecorderDigitalDisplay::mousePressEvent(QMouseEvent *event)
{
    m_pressedLine = isRuntime() && event->button() == Qt::LeftButton ? buttonAt(event->pos()) : -1;
    event->setAccepted(m_pressedLine >= 0);
    DirectPainting::repaint(*this);
}

void qwidgetRecorderDigitalDisplay::mouseReleaseEvent(QMouseEvent *event)
{
    const int pressed = std::exchange(m_pressedLine, -1);
    event->setAccepted(pressed >= 0);
    DirectPainting::repaint(*this);
    if (pressed >= 0 && buttonAt(event->pos()) == pressed)
        reset(pressed);
}

void qwidgetRecorderDigitalDisplay::reset(int line)
{
    if (!m_display)
        return;
    const auto channels = m_display->GetChannels();
    if (line >= int(channels.size()))
        return;
    const QPointer<qwidgetRecorderDigitalDisplay> alive(this);
    Nodes::recorderChannel &channel = *channels[std::size_t(line)];
    ValueWriter::report(
        context(), context().actions().write(*m_display, [&] { return channel.ResetExtremes(); }));
    if (alive)
        onValueUpdated(Nodes::SignalValue());
}

void qwidgetRecorderDigitalDisplay::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintDirectly(painter);
}

void qwidgetRecorderDigitalDisplay::paintDirectly(QPainter &painter)
{
    painter.save();
    painter.fillRect(rect(), m_backgroundColor);
    for (int line = 0; line < m_lines.size(); ++line)
        m_lines.at(line).draw(painter, lineRect(line), m_font, m_textColor, line == m_pressedLine);
    ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
    if (m_display && m_display->isDisabled())
        ElementPainting::drawDisabledCover(painter, rect());
    painter.restore();
}

bool qwidgetRecorderDigitalDisplay::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QWidget::event(event);
}

} // namespace Widgets
