#include "editor/properties/GeometryPreview.h"

#include "editor/properties/PropertyModel.h"
#include "editor/workspace/DocumentView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/visual/SharedProperties.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"

#include <QEvent>

namespace Editor {

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
    if (editor && editor->drag().isActive() && editor->selection().count() == 1 &&
        editor->selection().key()) {
        using Geometry = Nodes::GeometryProp;
        const QRect rect = editor->selection().key()->geometry().toRect();
        texts = {{Geometry::X, QString::number(rect.x())},
                 {Geometry::Y, QString::number(rect.y())},
                 {Geometry::Width, QString::number(rect.width())},
                 {Geometry::Height, QString::number(rect.height())}};
    }
    m_model.setPreview(texts);
}

} // namespace Editor
