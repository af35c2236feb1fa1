#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/SceneContext.h"

#include "utils/relay/WatchedNode.h"

#include <QColor>

namespace Nodes {
class BasicFramedWidget;
class BasicProperty;
class BasicWidget;
class SignalValue;
} // namespace Nodes

namespace Widgets {
class PropertyBindings;
}

/// Signals of IWidget, which Qt's compiler wants in the class of the widget itself; and its slots.
/// In its spelling: it does not know `signals` out of a macro. What follows needs its own access.
#define ELEMENT_SIGNALS                                                                            \
Q_SIGNALS:                                                                                         \
    void valueUpdated(Nodes::SignalValue value) override;                                          \
    void updateProperty(Nodes::BasicProperty *property) override;                                  \
    void isActiveChanged(bool on) override;
#define ELEMENT_SIGNALS_AND_SLOTS                                                                  \
    ELEMENT_SIGNALS                                                                                \
public Q_SLOTS:                                                                                    \
    void onValueUpdated(Nodes::SignalValue value) override;                                        \
    void onUpdateProperties(Nodes::BasicProperty *property) override;

/// Base that every visual element carries beside its Qt widget: ties it to its configuration node
/// and switches it between active and inactive. While inactive, an element ignores every change of
/// its node. The node is not owned and may go away at any time: an element then does nothing but
/// be drawn. GUI thread.
class WIDGETS_EXPORT IWidget
{
public:
    IWidget(const IWidget &) = default;
    IWidget(IWidget &&) = default;
    IWidget &operator=(const IWidget &) = default;
    IWidget &operator=(IWidget &&) = default;
    /// Slot: a new value came; draw what the node offers now.
    virtual void onValueUpdated(Nodes::SignalValue value) = 0;
    /// Slot: that property changed; null asks to apply all.
    virtual void onUpdateProperties(Nodes::BasicProperty *property) = 0;

protected:
    IWidget(Nodes::BasicWidget *node, Widgets::SceneContextPtr context);
    virtual void onActive(bool on) = 0;

public:
    /// Qt signals of the concrete element.
    virtual void valueUpdated(Nodes::SignalValue value) = 0;
    virtual void updateProperty(Nodes::BasicProperty *property) = 0;
    virtual void isActiveChanged(bool on) = 0;

    // Behind the operations, whose places hosts rely on: the slot comes first.
    virtual ~IWidget();

    /// What a change of each property of the node does to this element.
    virtual const Widgets::PropertyBindings &bindings() const;

    bool isActive() const { return m_isActive; }
    /// On a change: stores it, tells isActiveChanged, starts or stops the node, calls onActive. The
    /// node has to exist still, in its tree or just taken out of it.
    void setActive(bool on);
    void start() { setActive(true); }
    void stop() { setActive(false); }

    /// Of the scene that shows the element; the process's for one that stands in none.
    const Widgets::SceneContext &context() const { return *m_context; }
    /// Input acts, and what is hidden at run time is hidden.
    bool isRuntime() const { return m_context->isRuntime(); }
    bool isEditor() const { return m_context->isEditor(); }

protected:
    /// Takes over that property of the node, all for null, by the bindings, and shows the value
    /// anew where that is called for. True when the element is to be painted then.
    [[nodiscard]] bool takeOver(const Nodes::BasicWidget &node,
                                const Nodes::BasicProperty *property);
    void takeBorder(const Nodes::BasicFramedWidget &node);
    void takeBackground(const Nodes::BasicFramedWidget &node);

    bool m_isActive = false;
    Utils::WatchedNode<Nodes::BasicWidget> m_node;
    QColor m_backgroundColor = Qt::white;
    QColor m_borderColor = Qt::black;
    int m_borderWidth = 1; ///< pixels; 0 or less draws no border

private:
    Widgets::SceneContextPtr m_context;
};
