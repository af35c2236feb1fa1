#include "widgets/reports/engine/data/DataSourceManager.h"

#include "widgets/reports/engine/data/SnapshotRows.h"
#include "widgets/reports/engine/data/TemplateSources.h"

#include <QAbstractItemModel>

namespace LimeReport {

namespace {

DataSource readAll(QAbstractItemModel &model)
{
    if (const auto *shared = dynamic_cast<SharedRowsModel *>(&model))
        return DataSource(shared->sharedRows());
    auto rows = std::make_shared<SnapshotRows>(model);
    const int count = model.rowCount();
    while (rows->rowCount() < count)
        rows->addRow(model);
    return DataSource(rows);
}

} // namespace

DataSourceManager::DataSourceManager(QObject *parent) : QObject(parent) {}

DataSourceManager::~DataSourceManager()
{
    for (auto &[name, entry] : m_entries)
        release(entry);
}

void DataSourceManager::release(Entry &entry)
{
    if (entry.isOwned)
        delete entry.model.data();
    entry = Entry();
}

void DataSourceManager::setReportVariable(const QString &name, const QVariant &value)
{
    m_userVariables.insert(name, value);
}

void DataSourceManager::deleteVariable(const QString &name)
{
    m_userVariables.remove(name);
    m_templateVariables.remove(name);
}

bool DataSourceManager::containsVariable(const QString &name)
{
    return m_userVariables.contains(name) || m_templateVariables.contains(name);
}

QVariant DataSourceManager::variable(const QString &name)
{
    return variables().value(name);
}

QVariantMap DataSourceManager::variables() const
{
    QVariantMap all = m_templateVariables;
    for (auto variable = m_userVariables.begin(); variable != m_userVariables.end(); ++variable)
        all.insert(variable.key(), variable.value());
    return all;
}

bool DataSourceManager::addModel(const QString &name, QAbstractItemModel *model, bool owned)
{
    if (name.isEmpty() || !model)
        return false;
    Entry &entry = m_entries[name];
    if (entry.model != model)
        release(entry);
    entry.model = model;
    entry.isOwned = owned;
    return true;
}

void DataSourceManager::removeModel(const QString &name)
{
    const auto found = m_entries.find(name);
    if (found == m_entries.end())
        return;
    release(found->second);
    m_entries.erase(found);
}

bool DataSourceManager::containsDatasource(const QString &name)
{
    const auto found = m_entries.find(name);
    if (found != m_entries.end() && found->second.model)
        return true;
    return std::any_of(m_links.begin(), m_links.end(),
                       [&name](const DetailLink &link) { return link.name == name; });
}

void DataSourceManager::clearUserVariables()
{
    m_userVariables.clear();
}

QStringList DataSourceManager::setTemplate(const QVariantMap &datasourcesManager)
{
    const TemplateSources told = TemplateSources::read(datasourcesManager);
    m_templateVariables = told.variables;
    m_links = told.links;
    return told.errors;
}

QMap<QString, QAbstractItemModel *> DataSourceManager::models() const
{
    QMap<QString, QAbstractItemModel *> living;
    for (const auto &[name, entry] : m_entries)
        if (entry.model)
            living.insert(name, entry.model);
    return living;
}

DataSet DataSourceManager::snapshot() const
{
    DataSet data;
    data.variables = variables();
    data.links = m_links;
    const QMap<QString, QAbstractItemModel *> living = models();
    for (auto model = living.begin(); model != living.end(); ++model)
        data.sources.insert(model.key(), readAll(*model.value()));
    return data;
}

} // namespace LimeReport
