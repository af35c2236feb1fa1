#pragma once

#include "widgets/reports/engine/data/DataSet.h"
#include "widgets/reports/engine/lrdatasourcemanagerintf.h"

#include <QObject>
#include <QPointer>

#include <map>
#include <memory>

class QAbstractItemModel;

namespace LimeReport {

/// The engine's data manager. GUI thread.
class WIDGETS_EXPORT DataSourceManager : public QObject, public IDataSourceManager
{
    Q_OBJECT

public:
    explicit DataSourceManager(QObject *parent = nullptr);
    ~DataSourceManager() override;

    void setReportVariable(const QString &name, const QVariant &value) override;
    void deleteVariable(const QString &name) override;
    bool containsVariable(const QString &name) override;
    QVariant variable(const QString &name) override;
    bool addModel(const QString &name, QAbstractItemModel *model, bool owned) override;
    void removeModel(const QString &name) override;
    bool containsDatasource(const QString &name) override;
    void clearUserVariables() override;

    /// What a template declares under `datasourcesManager`; replaces what the last one declared and
    /// leaves models and user variables. Sources that only a database could fill stay unfilled
    /// until a model of their name is added. The returned texts tell what isn't understood.
    QStringList setTemplate(const QVariantMap &datasourcesManager);

    /// Models that still live, by name.
    QMap<QString, QAbstractItemModel *> models() const;
    const QList<DetailLink> &links() const { return m_links; }
    QVariantMap variables() const;
    /// Everything read at once; SnapshotTaker does it in slices.
    DataSet snapshot() const;

private:
    struct Entry
    {
        QPointer<QAbstractItemModel> model;
        bool isOwned = false;
    };
    void release(Entry &entry);

    std::map<QString, Entry> m_entries;
    QVariantMap m_userVariables;
    QVariantMap m_templateVariables;
    QList<DetailLink> m_links;
};

} // namespace LimeReport
