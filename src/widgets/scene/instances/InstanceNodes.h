#pragma once

#include "widgets/context/SceneContext.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/templates/TemplateBinding.h"

#include <QSize>
#include <QString>

#include <optional>

namespace Nodes {
class widgetInstance;
}

namespace Widgets {

/// The nodes of one instance on a screen: a copy of the element's template, as it was when this was
/// made. They go with this object, or later when actions still work on them. GUI thread.
class InstanceNodes
{
public:
    InstanceNodes(Nodes::widgetInstance &element, SceneContextPtr context);
    ~InstanceNodes();
    InstanceNodes(const InstanceNodes &) = delete;
    InstanceNodes &operator=(const InstanceNodes &) = delete;

    /// Copy of the window or composition; null when there is none to show.
    Nodes::ConfigNode *root() const { return m_root.GetNode(); }
    /// In Russian, why there is none; "" otherwise.
    const QString &refusal() const { return m_refusal; }
    /// Of the template, in pixels.
    QSize size() const;
    /// In Russian, the parameters that stand for nothing; "" when there are none.
    QString missing() const;
    /// Whether the element would get the same nodes now, if the template has not changed.
    bool isFor(const Nodes::widgetInstance &element) const;

private:
    static QString refusalOf(const Nodes::widgetInstance &element);

    SceneContextPtr m_context;
    QString m_refusal;
    unsigned long m_source = 0;
    std::optional<Nodes::TemplateBinding> m_binding;
    Nodes::NodeLink m_root;
};

} // namespace Widgets
