#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"
#include "widgets/elements/binding/ShowsValue.h"

#include "nodes/values/Quality.h"

#include <QComboBox>
#include <QDialog>
#include <QGraphicsProxyWidget>
#include <QPointer>
#include <QTimer>

namespace Nodes {
class Result;
class widgetComboBox;
} // namespace Nodes

namespace Widgets {

/// List of named values of a Nodes::widgetComboBox: shows the one that the signal has and writes
/// the one chosen. A bad value shows none. While the list is open, values wait. GUI thread.
class WIDGETS_EXPORT qwidgetComboBox : public QComboBox, public IWidget, public ShowsValue
{
    Q_OBJECT

public:
    using Node = Nodes::widgetComboBox;

    qwidgetComboBox(Nodes::widgetComboBox *node, QWidget *parent,
                    const SceneContextPtr &context = SceneContext::process());
    ~qwidgetComboBox() override;

    /// Item that the open list is raised with; may be null.
    void setProxy(QGraphicsProxyWidget *proxy);

    QString shownText() const override;

    void showPopup() override;
    void hidePopup() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected slots:
    /// The operator chose: asks where configured, writes, goes back where that is refused.
    void onCurrentIndexChanged(int index);

protected:
    void onActive(bool on) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    void placeList(QWidget &popup);
    void onListHidden();
    enum class Outcome { Written, WrittenElsewhere, Refused, Silenced };

    bool confirmed(int index);
    bool ask(QDialog &question);
    void restartLimit();
    void onTimeLimit();
    void UpdateNodePropertyCurrentIndex(int index);
    void applyStyle(const Nodes::widgetComboBox &comboBox);
    /// Fills the list and shows what is chosen of it.
    void applyItems(const Nodes::widgetComboBox &comboBox);
    void takeIndex(const Nodes::widgetComboBox &comboBox);
    void select(int index);
    void selectShown();
    Outcome writeAll(int index, const Nodes::SignalValue &value);

    Utils::WatchedNode<Nodes::widgetComboBox> m_comboBox; ///< null also for another class
    QPointer<QGraphicsProxyWidget> m_proxy;
    int m_previousIndex = -1;
    double m_savedZ = 0; ///< of the host, while the list is open
    bool m_isListOpen = false;
    QTimer m_limit; ///< runs while the list or the question is open, from the last input
    QPointer<QDialog> m_question;
    bool m_isTimeUp = false;
    Qt::Alignment m_alignment;
    ElementBinding m_binding;
};

} // namespace Widgets
