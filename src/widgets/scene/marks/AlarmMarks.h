#pragma once

#include "widgets/WidgetsExport.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>

namespace Widgets {

class AlarmOverlay;
class LayerStack;
class ProxyWidget;

/// The signs of alarms on the elements of one scene that is live. Elements whose signals are not in
/// alarm cost nothing, and as long as no alarm is there nobody looks at any. The layers outlive it.
/// GUI thread.
class WIDGETS_EXPORT AlarmMarks : public QObject
{
    Q_OBJECT

public:
    AlarmMarks(const LayerStack &layers, QObject *parent);

    /// Shows how alarms stand, and follows them.
    void start();
    /// Takes all signs away.
    void stop();
    /// The element came, or shows another signal.
    void update(ProxyWidget &element);
    /// Null without a sign.
    AlarmOverlay *on(const ProxyWidget &element) const;

private:
    void onChanged(const QSet<unsigned long> &ofSignals);

    const LayerStack &m_layers;
    bool m_isStarted = false;
    QHash<const ProxyWidget *, QPointer<AlarmOverlay>> m_signs;
};

} // namespace Widgets
