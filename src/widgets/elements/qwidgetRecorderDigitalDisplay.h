#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/AlarmWatch.h"
#include "widgets/elements/binding/ElementBinding.h"
#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/elements/painting/DirectPainting.h"

#include "nodes/values/Quality.h"

#include <QFont>
#include <QVector>
#include <QWidget>

namespace Nodes {
class widgetRecorderDigitalDisplay;
}

namespace Widgets {

struct RecorderLine;

/// Board of a Nodes::widgetRecorderDigitalDisplay: a line for each channel with name, extremes,
/// state, value and unit, in figures as large as the lines allow. A press on a line's button
/// resets its extremes. GUI thread.
class WIDGETS_EXPORT qwidgetRecorderDigitalDisplay : public QWidget,
                                                     public IWidget,
                                                     public DirectPainting,
                                                     public ShowsValue
{
    Q_OBJECT

public:
    using Node = Nodes::widgetRecorderDigitalDisplay;

    qwidgetRecorderDigitalDisplay(Nodes::widgetRecorderDigitalDisplay *node, QWidget *parent,
                                  const SceneContextPtr &context = SceneContext::process());
    ~qwidgetRecorderDigitalDisplay() override;

    /// The lines' values with their units, one a line.
    QString shownText() const override;
    /// The worst of the lines.
    Nodes::Quality shownQuality() const override;
    int lineCount() const { return m_lines.size(); }
    QString extremesText(int line) const;
    /// Place of the button of that line.
    QRect resetButton(int line) const;
    void paintDirectly(QPainter &painter) override;

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected:
    void onActive(bool on) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    void takeText(const Nodes::widgetRecorderDigitalDisplay &display);
    QRect lineRect(int line) const;
    int buttonAt(const QPoint &point) const;
    void reset(int line);

    Utils::WatchedNode<Nodes::widgetRecorderDigitalDisplay>
        m_display; ///< null also for another class
    QVector<RecorderLine> m_lines;
    int m_pressedLine = -1;
    QFont m_font;
    QColor m_textColor;
    AlarmWatch m_alarms;
    ElementBinding m_binding;
};

} // namespace Widgets
