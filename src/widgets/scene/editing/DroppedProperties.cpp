#include "widgets/scene/editing/DroppedProperties.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>

namespace Widgets {

void DroppedProperties::put(const Texts &texts, QMimeData &data)
{
    QJsonObject object;
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        object[it.key()] = it.value();
    data.setData(QLatin1String(Format), QJsonDocument(object).toJson(QJsonDocument::Compact));
}

DroppedProperties::Texts DroppedProperties::of(const QMimeData &data)
{
    Texts texts;
    const QJsonObject object = QJsonDocument::fromJson(data.data(QLatin1String(Format))).object();
    for (auto it = object.begin(); it != object.end(); ++it)
        texts[it.key()] = it.value().toString();
    return texts;
}

void DroppedProperties::apply(const Texts &texts, Nodes::ConfigNode &node)
{
    for (auto it = texts.cbegin(); it != texts.cend(); ++it) {
        const std::string key = it.key().toStdString();
        if (node.GetKind()->FindProperty(std::string_view(key)))
            (void)node.SetPropertyText(key, it.value().toStdString());
        else if (key == "name")
            (void)node.Rename(it.value().toStdString());
    }
}

} // namespace Widgets
