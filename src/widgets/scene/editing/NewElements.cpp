#include "widgets/scene/editing/NewElements.h"

#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/scene/editing/NewCharts.h"

#include "nodes/model/FreeName.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/models/SortNodeTypes.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/IUndo.h"

#include <QMenu>

#include <algorithm>

namespace Widgets {

namespace {

/// Of the kinds whose parts cannot be read in the size that every element has at first.
struct ReadableSize
{
    const char *kind;
    const char *width;
    const char *height;
};

constexpr ReadableSize readableSizes[] = {
    {"chartHistory", "480", "280"},    {"chartXY", "480", "280"},
    {"chartCorridor", "480", "280"},   {"reportDisplay", "600", "400"},
    {"eventList", "1200", "320"},      {"alarmList", "1200", "320"},
    {"alarmHealth", "1200", "480"},    {"alarmBanner", "744", "48"},
    {"recorderDisplay", "640", "320"},
};

const ReadableSize *readableSize(const Nodes::NodeType &type)
{
    const auto found =
        std::find_if(std::begin(readableSizes), std::end(readableSizes),
                     [&type](const ReadableSize &size) { return type.ToString() == size.kind; });
    return found == std::end(readableSizes) ? nullptr : &*found;
}

void makeReadable(const Nodes::NodeType &type, Nodes::ConfigNode &node)
{
    const ReadableSize *size = readableSize(type);
    if (!size)
        return;
    (void)node.SetPropertyText("width", size->width); // within the range of every element
    (void)node.SetPropertyText("height", size->height);
}

void warn(const char *text)
{
    PlainMessageBox::ask(QMessageBox::Warning, QStringLiteral("Внимание"), QString::fromUtf8(text));
}

std::string freeName(const Nodes::ConfigNode &parent, const std::string &wanted)
{
    std::vector<std::string_view> taken;
    for (const auto &child : parent.Children())
        taken.emplace_back(child->GetName());
    return Nodes::FreeName(taken, wanted, 1);
}

} // namespace

NewElements::NewElements(Utils::IUndo &undo) : m_undo(undo) {}

NewElements::~NewElements() = default;

void NewElements::fillMenu(const Nodes::ConfigNode &parent)
{
    if (!m_menu)
        m_menu = std::make_unique<QMenu>(QStringLiteral("Добавить виджет"));
    const auto types = parent.GetAvailableChildNodes();
    if (types.empty())
        return;
    m_menu->clear();
    for (const auto &group : Utils::SortNodeTypes(types))
        fillGroup(group);
    emit menuFilled(m_menu.get());
}

void NewElements::fillGroup(const std::vector<Nodes::NodeType> &types)
{
    QMenu *menu = m_menu.get();
    if (types.size() > 1)
        menu = menu->addMenu(QString::fromStdString(types.front().GetTypeNameTranslated()));
    for (const Nodes::NodeType &type : types) {
        QAction *action = menu->addAction(QString::fromStdString(type.GetSubtypeNameTranslated()));
        connect(action, &QAction::triggered, this, [this, type] { emit chosen(type); });
    }
    m_menu->addSeparator();
}

bool NewElements::add(const Nodes::NodeType &type, Nodes::ConfigNode *parent, QPointF point,
                      bool isCentre, const DroppedProperties::Texts &properties,
                      const Landing &landing)
{
    Nodes::NodesCollection *project = parent ? parent->GetNodesCollection() : nullptr;
    if (!project) {
        warn("Коллекция не найдена");
        return false;
    }
    // It enters the tree by the command only; the layer hears of the new child and shows it then.
    const Nodes::NodeLink link(project->CreateNode(type, nullptr));
    auto *node = dynamic_cast<Nodes::BasicWidget *>(link.GetNode());
    if (!node || !parent->GetKind()->AllowsChild(type)) {
        (void)project->TakeClone(link);
        warn("Узел не создан");
        return false;
    }
    makeReadable(type, *node);
    NewCharts::complete(*node);
    DroppedProperties::apply(properties, *node);
    node->SetName(freeName(*parent, node->GetName()));
    const Nodes::NRect box = node->GetGeometry();
    QPoint corner = point.toPoint() - (isCentre ? QPoint(box.width / 2, box.height / 2) : QPoint());
    if (landing)
        corner = landing({corner, QSize(box.width, box.height)});
    node->SetPosition(corner.x(), corner.y());
    m_undo.pushToUndoStack(new Utils::AddNodeLinkCommand(link, Nodes::NodeLink(parent)));
    return !project->TakeClone(link); // refused ones are still there; the command has logged why
}

QSize NewElements::sizeOf(const Nodes::NodeType &type, const DroppedProperties::Texts &properties)
{
    const Nodes::KindInfo *kind = Nodes::KindTable::Instance().Find(type);
    const auto *fresh =
        kind ? dynamic_cast<const Nodes::BasicWidget *>(kind->prototype.get()) : nullptr;
    if (!fresh)
        return {};
    QSize size(fresh->GetGeometry().width, fresh->GetGeometry().height);
    if (const ReadableSize *readable = readableSize(type))
        size = {QByteArray(readable->width).toInt(), QByteArray(readable->height).toInt()};
    const QString width = properties.value(Nodes::GeometryProp::Width.key);
    const QString height = properties.value(Nodes::GeometryProp::Height.key);
    return {width.isEmpty() ? size.width() : width.toInt(),
            height.isEmpty() ? size.height() : height.toInt()};
}

} // namespace Widgets
