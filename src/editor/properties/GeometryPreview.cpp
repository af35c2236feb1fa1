#include "editor/properties/GeometryPreview.h"

#include "editor/properties/PropertyModel.h"
#include "editor/properties/PropertyTexts.h"
#include "editor/workspace/DocumentView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/visual/SharedProperties.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"

#include <QEvent>

#include <algorithm>

namespace Editor {

namespace {

// What they do not have in common stays told as such.
QString common(const QVector<QRect> &rects, int (QRect::*value)() const)
{
    const int first = (rects.first().*value)();
    const bool isSame = std::all_of(rects.begin(), rects.end(),
                                    [&](const QRect &rect) { return (rect.*value)() == first; });
    return isSame ? QString::number(first) : PropertyTexts::mixed();
}

PropertyEdits::Texts textsOf(const QList<Widgets::ProxyWidget *> &hosts)
{
    QVector<QRect> rects;
    for (const Widgets::ProxyWidget *host : hosts)
        rects.append(host->geometry().toRect());
    if (rects.isEmpty())
        return {};
    using Geometry = Nodes::GeometryProp;
    return {{Geometry::X, common(rects, &QRect::x)},
            {Geometry::Y, common(rects, &QRect::y)},
            {Geometry::Width, common(rects, &QRect::width)},
            {Geometry::Height, common(rects, &QRect::height)}};
}

} // namespace

GeometryPreview::GeometryPreview(Workspace &workspace, PropertyModel &model, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_model(model)
{
    m_later.setSingleShot(true);
    m_later.setInterval(0);
    connect(&m_later, &QTimer::timeout, this, &GeometryPreview::show);
    connect(&workspace, &Workspace::documentChanged, this, &GeometryPreview::follow);
    follow();
}

GeometryPreview::~GeometryPreview() = default;

void GeometryPreview::follow()
{
    if (m_view)
        m_view->removeEventFilter(this);
    const DocumentView *document = m_workspace.document();
    Widgets::ProxyView *view = document ? document->view() : nullptr;
    m_view = view ? view->viewport() : nullptr;
    if (m_view)
        m_view->installEventFilter(this);
    show();
}

bool GeometryPreview::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonRelease)
        m_later.start();
    return false;
}

void GeometryPreview::show()
{
    const DocumentView *document = m_workspace.document();
    const Widgets::ProxyScene *scene = document ? document->scene() : nullptr;
    Widgets::SceneEditor *editor = scene ? scene->sceneEditor() : nullptr;
    PropertyEdits::Texts texts;
    if (editor && editor->drag().isActive() && !editor->selection().isEmpty())
        texts = textsOf(editor->selection().hosts());
    m_model.setPreview(texts);
}

} // namespace Editor
