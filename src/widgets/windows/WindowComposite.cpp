#include "widgets/windows/WindowComposite.h"

#include "widgets/scene/ProxyScene.h"

#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/windowComposed.h"

namespace Widgets {

WindowComposite::WindowComposite(Nodes::BasicWindow *node, QWidget *parent)
    : WindowBasic(node, parent)
{
    const auto *composed = dynamic_cast<const Nodes::windowComposed *>(node);
    if (!composed)
        return;
    setObjectName(QString::fromStdString(node->GetName()));
    LoadComposition(composed->GetComposition());
    updateGeometryWindow();
    onUpdateProperties();
}

Nodes::BasicComposition *WindowComposite::composition() const
{
    return m_composition.get();
}

void WindowComposite::LoadComposition(Nodes::BasicComposition *composition)
{
    if (!composition)
        return;
    if (auto *composed = dynamic_cast<Nodes::windowComposed *>(getNode()))
        composed->LoadComposition(composition);
    QGraphicsScene *left = scene();
    const bool isLeftKept = m_kept.contains(m_compositionId);
    stopScene();
    if (!enterScene(*composition))
        return;
    // The switch may come while one of its elements keeps a dialog open.
    if (left && left != scene() && !isLeftKept)
        deleteWhenIdle(left);
    m_composition = composition;
    m_compositionId = composition->GetId();
    startScene();
}

bool WindowComposite::enterScene(Nodes::BasicComposition &composition)
{
    if (ProxyScene *kept = m_kept.value(composition.GetId())) {
        showScene(kept, &composition);
        return true;
    }
    ProxyScene *built = setScene(&composition);
    if (built && composition.isKept())
        m_kept.insert(composition.GetId(), built);
    return built != nullptr;
}

} // namespace Widgets
