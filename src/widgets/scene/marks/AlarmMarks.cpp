#include "widgets/scene/marks/AlarmMarks.h"

#include "widgets/elements/alarms/AlarmBoard.h"
#include "widgets/scene/LayerStack.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/marks/AlarmOverlay.h"

#include "nodes/visual/BasicWidget.h"

#include <utility>

namespace Widgets {

namespace {

/// Id of the signal whose alarms the element is to show; 0 for none.
unsigned long signalOf(const ProxyWidget &element)
{
    const Nodes::BasicWidget *node = element.getNode();
    return node && node->hasAlarmIndication() ? node->GetSignalLink().GetNodeId() : 0;
}

} // namespace

AlarmMarks::AlarmMarks(const LayerStack &layers, QObject *parent)
    : QObject(parent), m_layers(layers)
{
}

void AlarmMarks::start()
{
    if (std::exchange(m_isStarted, true))
        return;
    AlarmBoard &board = AlarmBoard::instance();
    connect(&board, &AlarmBoard::changed, this, &AlarmMarks::onChanged);
    if (board.isEmpty())
        return;
    for (const ProxyLayer *layer : m_layers.all()) {
        for (ProxyWidget *element : layer->getWidgets())
            update(*element);
    }
}

void AlarmMarks::stop()
{
    m_isStarted = false;
    disconnect(&AlarmBoard::instance(), nullptr, this, nullptr);
    for (const QPointer<AlarmOverlay> &sign : std::exchange(m_signs, {}))
        delete sign;
}

void AlarmMarks::onChanged(const QSet<unsigned long> &ofSignals)
{
    for (const ProxyLayer *layer : m_layers.all()) {
        for (ProxyWidget *element : layer->getWidgets()) {
            const unsigned long signal = signalOf(*element);
            if (signal != 0 && ofSignals.contains(signal))
                update(*element);
        }
    }
}

void AlarmMarks::update(ProxyWidget &element)
{
    const unsigned long signal = m_isStarted ? signalOf(element) : 0;
    const AlarmSummary summary = signal != 0 ? AlarmBoard::instance().of(signal) : AlarmSummary();
    QPointer<AlarmOverlay> sign = m_signs.value(&element);
    if (summary.state == Nodes::AlarmState::Normal) {
        m_signs.remove(&element);
        delete sign;
    } else if (sign) {
        sign->setSummary(summary);
    } else {
        m_signs.insert(&element, new AlarmOverlay(element, summary));
    }
}

AlarmOverlay *AlarmMarks::on(const ProxyWidget &element) const
{
    return m_signs.value(&element);
}

} // namespace Widgets
