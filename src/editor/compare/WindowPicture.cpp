#include "editor/compare/WindowPicture.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "nodes/visual/windows/windowComposed.h"
#include "widgets/context/SceneContext.h"
#include "widgets/scene/ProxyScene.h"

#include <QPainter>

#include <algorithm>
#include <memory>

namespace Editor {

namespace {

constexpr int largestSide = 4096;  // pixels; larger windows are shown in part
constexpr int outline = 3;         // pixels
constexpr double shownWidth = 600; // about; the larger the window, the larger its signs

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
    context.setPreview(true);
    if (const auto *composed = dynamic_cast<Nodes::windowComposed *>(node))
        node = composed->GetComposition();
    if (auto *window = dynamic_cast<Nodes::BasicWindow *>(node))
        return std::make_unique<Widgets::ProxyScene>(window, nullptr, context);
    if (auto *composition = dynamic_cast<Nodes::BasicComposition *>(node))
        return std::make_unique<Widgets::ProxyScene>(composition, nullptr, context);
    return nullptr;
}

void paint(QPainter &painter, const PictureMark &mark, double zoom)
{
    const QRect place(mark.place.x, mark.place.y, mark.place.width, mark.place.height);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, zoom * (outline + 2)));
    painter.drawRect(place);
    painter.setPen(QPen(mark.color, zoom * (mark.isChosen ? 2 * outline : outline)));
    painter.drawRect(place);
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(int(16 * zoom));
    painter.setFont(font);
    const QRect badge(place.topLeft() - QPoint(2, 2), QSize(24, 22) * zoom);
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

QImage WindowPicture::render(const Nodes::ConfigNode &window, const std::vector<PictureMark> &marks)
{
    const Nodes::NodesCollection *project = window.GetNodesCollection();
    if (!project)
        return {};
    const ResourceDirectory directory(project->GetDirectory());
    const auto scene = makeScene(const_cast<Nodes::ConfigNode *>(&window)); // only looked at
    if (!scene)
        return {};
    const QRectF seen = scene->sceneRect();
    const QSize size = seen.size().toSize().boundedTo(QSize(largestSide, largestSide));
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::lightGray);
    QPainter painter(&image);
    scene->render(&painter, QRectF(QPointF(), QSizeF(size)), QRectF(seen.topLeft(), size));
    painter.translate(-seen.topLeft());
    for (const PictureMark &mark : marks)
        paint(painter, mark, std::max(1.0, size.width() / shownWidth));
    return image;
}

} // namespace Editor
