#include "widgets/scene/editing/drops/DroppedElements.h"

#include "widgets/scene/editing/DraggedNodes.h"
#include "widgets/scene/editing/NewElements.h"
#include "widgets/scene/editing/drops/PictureImport.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/templates/TemplateUse.h"
#include "nodes/templates/widgetInstance.h"
#include "nodes/visual/elements/widgetImage.h"
#include "nodes/visual/elements/widgetSymbol.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <QMimeData>
#include <QSize>

#include <algorithm>

namespace Widgets {

namespace {

constexpr QSize largest(640, 480); // of a fresh image, in pixels

bool areTemplates(const Nodes::NodesArray &nodes)
{
    return !nodes.empty() && std::all_of(nodes.begin(), nodes.end(), [](const auto &link) {
        return Nodes::TemplateUse::IsTemplate(*link.GetNode());
    });
}

/// None for an empty size: the kind's own stays.
DroppedProperties::Texts sizeTexts(const QSize &size)
{
    if (size.isEmpty())
        return {};
    return {{QStringLiteral("width"), QString::number(size.width())},
            {QStringLiteral("height"), QString::number(size.height())}};
}

/// Keys and texts of the template's size, for an instance of it.
DroppedProperties::Texts sizeOf(const Nodes::ConfigNode &source)
{
    Nodes::NSize size;
    if (const auto *window = dynamic_cast<const Nodes::BasicWindow *>(&source))
        size = {window->GetGeometry().width, window->GetGeometry().height};
    else if (const auto *composition = dynamic_cast<const Nodes::BasicComposition *>(&source))
        size = composition->GetSize();
    return sizeTexts({size.width, size.height});
}

} // namespace

bool DroppedElements::isIn(const QMimeData &data, const Nodes::NodesCollection &project)
{
    return data.hasFormat(NewElements::typesFormat()) || !PictureImport::filesOf(data).isEmpty() ||
           areTemplates(DraggedNodes::read(project, data));
}

DroppedElements DroppedElements::of(const QMimeData &data, const Nodes::ConfigNode &owner)
{
    DroppedElements dropped;
    dropped.addKinds(data);
    dropped.addTemplates(data, owner);
    dropped.addPictures(data, *owner.GetNodesCollection());
    return dropped;
}

void DroppedElements::addKinds(const QMimeData &data)
{
    for (const QString &text : DraggedNodes::texts(data, NewElements::typesFormat())) {
        const Nodes::NodeType type(text.toStdString());
        if (type.GetFamily() == Nodes::NodeType::TypeWidget)
            m_elements.push_back({type, DroppedProperties::of(data)});
    }
}

void DroppedElements::addTemplates(const QMimeData &data, const Nodes::ConfigNode &owner)
{
    const Nodes::NodesArray nodes = DraggedNodes::read(*owner.GetNodesCollection(), data);
    if (!areTemplates(nodes))
        return;
    const Nodes::ConfigNode *around = Nodes::TemplateUse::Around(owner);
    for (const Nodes::NodeLink &link : nodes) {
        if (around && Nodes::TemplateUse::Shows(*link.GetNode(), *around)) {
            m_refusals << QStringLiteral("Шаблон «%1» здесь показал бы сам себя: поставьте его на "
                                         "другой экран или шаблон.")
                              .arg(QString::fromStdString(link.GetLinkName()));
            continue;
        }
        DroppedProperties::Texts texts = sizeOf(*link.GetNode());
        texts[QStringLiteral("template")] = QString::number(link.GetNodeId());
        texts[QStringLiteral("name")] = QString::fromStdString(link.GetLinkName());
        m_elements.push_back({Nodes::NodeType(Nodes::widgetInstance::Code), texts});
    }
}

void DroppedElements::addPictures(const QMimeData &data, const Nodes::NodesCollection &project)
{
    for (const QString &file : PictureImport::filesOf(data)) {
        const PictureImport::Imported taken =
            PictureImport::take(file, QString::fromStdString(project.GetDirectory()));
        if (!taken.refusal.isEmpty()) {
            m_refusals << taken.refusal;
            continue;
        }
        const Nodes::NodeType type(taken.isSymbol ? Nodes::widgetSymbol::Code
                                                  : Nodes::widgetImage::Code);
        const QString key = taken.isSymbol ? QStringLiteral("source") : QStringLiteral("image");
        const bool isLarge =
            taken.size.width() > largest.width() || taken.size.height() > largest.height();
        DroppedProperties::Texts texts =
            sizeTexts(isLarge ? taken.size.scaled(largest, Qt::KeepAspectRatio) : taken.size);
        texts[key] = taken.file;
        texts[QStringLiteral("name")] = taken.name;
        m_elements.push_back({type, texts});
    }
}

} // namespace Widgets
