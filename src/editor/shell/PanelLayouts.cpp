#include "editor/shell/PanelLayouts.h"

#include "editor/project/ProjectSession.h"

#include "nodes/model/NodesCollection.h"
#include "utils/settings/Configurator.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMainWindow>

namespace Editor {

namespace {

constexpr int keptProjects = 50;

Utils::Configurator settings()
{
    return {QStringLiteral("ConfiguratorWindow"), QStringLiteral("configurator.json")};
}

const QString geometryKey = QStringLiteral("geometry");
const QString usualKey = QStringLiteral("panels");
const QString projectsKey = QStringLiteral("projects");
const QString projectKey = QStringLiteral("project");

QByteArray bytes(const QJsonObject &kept, const QString &key)
{
    return QByteArray::fromBase64(kept.value(key).toString().toLatin1());
}

QString text(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QJsonObject load()
{
    QJsonObject kept;
    (void)settings().load(kept); // a damaged file is set aside and logged: the default stands
    return kept;
}

} // namespace

PanelLayouts::PanelLayouts(QMainWindow &window, ProjectSession &session)
    : QObject(&window), m_window(window), m_session(session), m_default(window.saveState())
{
    connect(&session, &ProjectSession::opened, this, &PanelLayouts::restoreProject);
    connect(&session, &ProjectSession::aboutToClose, this, &PanelLayouts::keepProject);
}

bool PanelLayouts::restoreWindow()
{
    const QJsonObject kept = load();
    if (kept.isEmpty())
        return false;
    m_window.restoreState(bytes(kept, usualKey));
    return m_window.restoreGeometry(bytes(kept, geometryKey));
}

void PanelLayouts::keepWindow()
{
    QJsonObject kept = load();
    kept.insert(geometryKey, text(m_window.saveGeometry()));
    kept.insert(usualKey, text(m_window.saveState()));
    (void)settings().save(kept); // logged; the next start has the layout kept before
}

void PanelLayouts::reset()
{
    m_window.restoreState(m_default);
}

void PanelLayouts::restoreProject()
{
    const QString id = QString::fromStdString(m_session.project()->GetUuid());
    const QJsonArray projects = load().value(projectsKey).toArray();
    for (const QJsonValue &project : projects) {
        if (project.toObject().value(projectKey).toString() == id)
            m_window.restoreState(bytes(project.toObject(), usualKey));
    }
}

// The latest first: those not opened for the longest time are forgotten.
void PanelLayouts::keepProject()
{
    const QString id = QString::fromStdString(m_session.project()->GetUuid());
    const QString panels = text(m_window.saveState());
    QJsonObject kept = load();
    const QJsonArray before = kept.value(projectsKey).toArray();
    QJsonArray projects{QJsonObject{{projectKey, id}, {usualKey, panels}}};
    for (const QJsonValue &project : before) {
        if (projects.size() < keptProjects && project.toObject().value(projectKey) != id)
            projects.append(project);
    }
    kept.insert(projectsKey, projects);
    kept.insert(usualKey, panels);
    (void)settings().save(kept); // logged
}

} // namespace Editor
