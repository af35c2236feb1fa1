#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"

#include "nodes/values/SignalValue.h"

#include <QLabel>

namespace Widgets {

/// Base of labels and images: binds the element to its node and keeps the text shown.
class WIDGETS_EXPORT qlabelBasic : public QLabel, public IWidget
{
    Q_OBJECT

public:
    qlabelBasic(Nodes::BasicWidget *node, QWidget *parent,
                const SceneContextPtr &context = SceneContext::process());
    ~qlabelBasic() override;

    const QString &labelText() const { return m_labelText; }

    ELEMENT_SIGNALS

public slots:
    void onValueUpdated(Nodes::SignalValue value) override = 0;
    void onUpdateProperties(Nodes::BasicProperty *property) override = 0;

protected:
    void onActive(bool on) override;
    void mousePressEvent(QMouseEvent *event) override;
    /// Shows quality, time and path of the value at the moment the operator asks.
    bool event(QEvent *event) override;

    QString m_labelText;

private:
    ElementBinding m_binding;
};

} // namespace Widgets
