#include "widgets/eventlist/EventListStore.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"

#include <QDir>
#include <QJsonArray>

namespace Widgets {

namespace {

QString fileOf(const Nodes::systemCore &model)
{
    return QDir(QString::fromStdString(model.GetDataDirectory()))
        .filePath(QStringLiteral("config.json"));
}

QJsonArray toJson(const std::vector<int> &codes)
{
    QJsonArray array;
    for (const int code : codes)
        array.append(code);
    return array;
}

QJsonArray toJson(const std::vector<unsigned long> &ids)
{
    QJsonArray array;
    for (const unsigned long id : ids)
        array.append(double(id));
    return array;
}

std::vector<unsigned long> idsOf(const QJsonArray &array)
{
    std::vector<unsigned long> ids;
    for (const QJsonValue &id : array)
        if (id.toDouble() > 0)
            ids.push_back(static_cast<unsigned long>(id.toDouble()));
    return ids;
}

std::vector<int> fromJson(const QJsonValue &value)
{
    std::vector<int> codes;
    const QJsonArray array = value.toArray();
    for (const QJsonValue &code : array)
        codes.push_back(code.toInt());
    return codes;
}

} // namespace

EventListStore::EventListStore(const Nodes::systemCore &model, unsigned long list)
    : Configurator(QStringLiteral("EventLists"), fileOf(model))
{
    const Nodes::systemAuthentication *users = model.GetSystemAuthentication();
    const unsigned long user = users ? users->GetCurrentUser().GetNodeId() : 0;
    const Nodes::NodesCollection *project = model.GetNodesCollection();
    m_owner = QStringLiteral("%1/%2/%3")
                  .arg(project ? QString::fromStdString(project->GetUuid()) : QString())
                  .arg(user)
                  .arg(list);
}

EventListSettings EventListStore::load() const
{
    EventListSettings settings;
    QJsonObject all;
    if (!Configurator::load(all)) // what was wrong is in the log
        return settings;
    const QJsonObject own = all.value(m_owner).toObject();
    settings.columns =
        QByteArray::fromBase64(own.value(QStringLiteral("columns")).toString().toLatin1());
    settings.filter.text = own.value(QStringLiteral("text")).toString();
    settings.filter.levels = fromJson(own.value(QStringLiteral("levels")));
    settings.filter.types = fromJson(own.value(QStringLiteral("types")));
    const QJsonArray users = own.value(QStringLiteral("users")).toArray();
    for (const QJsonValue &user : users)
        settings.filter.users.append(user.toString());
    if (const QJsonValue sources = own.value(QStringLiteral("sources")); sources.isArray())
        settings.sources = idsOf(sources.toArray());
    settings.isDetailed = own.value(QStringLiteral("details")).toBool();
    return settings;
}

Nodes::Result EventListStore::save(const EventListSettings &settings) const
{
    QJsonObject all;
    (void)Configurator::load(all); // a damaged file is set aside, and begun anew
    QJsonObject own{{QStringLiteral("columns"), QString::fromLatin1(settings.columns.toBase64())},
                    {QStringLiteral("text"), settings.filter.text},
                    {QStringLiteral("levels"), toJson(settings.filter.levels)},
                    {QStringLiteral("types"), toJson(settings.filter.types)},
                    {QStringLiteral("users"), QJsonArray::fromStringList(settings.filter.users)},
                    {QStringLiteral("details"), settings.isDetailed}};
    if (settings.sources)
        own.insert(QStringLiteral("sources"), toJson(*settings.sources));
    all.insert(m_owner, own);
    return Configurator::save(all);
}

} // namespace Widgets
