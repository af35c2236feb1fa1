#include "editor/compare/WindowPicture.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "nodes/visual/windows/windowComposed.h"
#include "widgets/context/SceneContext.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/Locker.h"

#include <QPainter>

#include <memory>

namespace Editor {

namespace {

constexpr int largestSide = 4096;   // pixels; larger windows are shown in part
constexpr int outline = 2;          // pixels
constexpr QSizeF badgeSize(24, 20); // pixels

/// Files are looked for beside the project that is drawn.
class ResourceDirectory
{
public:
    explicit ResourceDirectory(const std::string &directory)
        : m_before(Nodes::ResourceLink::GetBaseDirectory())
    {
        Nodes::ResourceLink::SetBaseDirectory(directory);
    }
    ~ResourceDirectory() { Nodes::ResourceLink::SetBaseDirectory(m_before); }
    ResourceDirectory(const ResourceDirectory &) = delete;
    ResourceDirectory &operator=(const ResourceDirectory &) = delete;

private:
    const std::string m_before;
};

std::unique_ptr<Widgets::ProxyScene> makeScene(Nodes::ConfigNode *node)
{
    Widgets::SceneContext context;
    // With nothing running, the form of a value tells more than a sign that there is none.
    context.setMode(Nodes::WorkModeEditing);
    if (const auto *composed = dynamic_cast<Nodes::windowComposed *>(node))
        node = composed->GetComposition();
    if (auto *window = dynamic_cast<Nodes::BasicWindow *>(node))
        return std::make_unique<Widgets::ProxyScene>(window, nullptr, context);
    if (auto *composition = dynamic_cast<Nodes::BasicComposition *>(node))
        return std::make_unique<Widgets::ProxyScene>(composition, nullptr, context);
    return nullptr;
}

void hideEditingMarks(const Widgets::ProxyScene &scene)
{
    for (const Widgets::ProxyLayer *layer : scene.getLayers()) {
        const QList<Widgets::ProxyWidget *> hosts = layer->getWidgets();
        for (Widgets::ProxyWidget *host : hosts) {
            host->setTypeFrame(Widgets::ProxyWidget::FrameNone);
            if (Widgets::Locker *lock = host->locker())
                lock->hide();
        }
    }
}

// Around the element, which stays to be seen.
void paint(QPainter &painter, const PictureMark &mark, const QRectF &place)
{
    const int width = mark.isChosen ? 2 * outline : outline;
    const QRectF frame = place.adjusted(-width, -width, width, width);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, width + 2));
    painter.drawRect(frame);
    painter.setPen(QPen(mark.color, width));
    painter.drawRect(frame);
    QRectF badge(frame.topLeft(), badgeSize);
    badge.moveBottomLeft(frame.topLeft());
    if (badge.top() < 0)
        badge.moveTopLeft(frame.bottomLeft());
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(16);
    painter.setFont(font);
    painter.fillRect(badge, mark.color);
    painter.setPen(Qt::white);
    painter.drawText(badge, Qt::AlignCenter, mark.sign);
}

} // namespace

const Nodes::ConfigNode *WindowPicture::windowOf(const Nodes::ConfigNode *node)
{
    for (; node; node = node->GetParent()) {
        if (dynamic_cast<const Nodes::BasicWindow *>(node) ||
            dynamic_cast<const Nodes::BasicComposition *>(node))
            return node;
    }
    return nullptr;
}

const Nodes::ConfigNode *WindowPicture::counterpart(const Nodes::ConfigNode &window,
                                                    const Nodes::NodesCollection &other)
{
    const Nodes::ConfigNode *same = other.FindNode(window.GetId());
    if (same && same->GetKind() == window.GetKind())
        return same;
    for (const Nodes::ConfigNode *named : other.GetNodesByPath(window.GetPath())) {
        if (named->GetKind() == window.GetKind())
            return named;
    }
    return nullptr;
}

QImage WindowPicture::render(const Nodes::ConfigNode &window)
{
    const Nodes::NodesCollection *project = window.GetNodesCollection();
    if (!project)
        return {};
    const ResourceDirectory directory(project->GetDirectory());
    const auto scene = makeScene(const_cast<Nodes::ConfigNode *>(&window)); // only looked at
    if (!scene)
        return {};
    hideEditingMarks(*scene);
    const QRectF seen = scene->sceneRect();
    const QSize size = seen.size().toSize().boundedTo(QSize(largestSide, largestSide));
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::lightGray);
    QPainter painter(&image);
    scene->render(&painter, QRectF(QPointF(), QSizeF(size)), QRectF(seen.topLeft(), size));
    return image;
}

void WindowPicture::mark(QImage &part, const QPoint &corner, double scale,
                         const std::vector<PictureMark> &marks)
{
    QPainter painter(&part);
    for (const PictureMark &mark : marks) {
        const QRectF place(mark.place.x, mark.place.y, mark.place.width, mark.place.height);
        paint(painter, mark, QRectF((place.topLeft() - corner) * scale, place.size() * scale));
    }
}

} // namespace Editor
