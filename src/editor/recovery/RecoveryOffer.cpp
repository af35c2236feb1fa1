#include "editor/recovery/RecoveryOffer.h"

#include "editor/compare/CompareDialog.h"
#include "editor/compare/CompareView.h"
#include "editor/project/ProjectSession.h"
#include "editor/recovery/AutoSave.h"
#include "editor/recovery/UnsavedProject.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/project/FileStamp.h"
#include "nodes/project/ProjectDiff.h"

#include <QDateTime>
#include <QPushButton>
#include <QTimer>

namespace Editor {

RecoveryOffer::RecoveryOffer(Workspace &workspace, AutoSave &autoSave, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_autoSave(autoSave)
{
    // When all that shows the project has taken it up.
    connect(&workspace.session(), &ProjectSession::opened, this, &RecoveryOffer::look,
            Qt::QueuedConnection);
    connect(&workspace.session(), &ProjectSession::aboutToClose, this, [this] {
        if (m_question) {
            m_question->hide(); // this may be the click of one of its buttons
            m_question->deleteLater();
            m_question = nullptr;
        }
        m_project.reset();
    });
}

RecoveryOffer::~RecoveryOffer() = default;

void RecoveryOffer::look()
{
    const ProjectSession &session = m_workspace.session();
    if (m_isRestoring || m_question || !session.isOpen() || session.isReadOnly() ||
        session.isModified())
        return;
    Nodes::RecoveryFile::Tidy(m_autoSave.directory().toStdString());
    const auto found = Nodes::RecoveryFile::List(m_autoSave.directory().toStdString(),
                                                 session.file().toStdString());
    for (const Nodes::RecoveryInfo &info : found) {
        if (offer(info))
            return;
    }
}

QMessageBox *RecoveryOffer::ask(const QString &text, const QString &more)
{
    m_question = new QMessageBox(QMessageBox::Question, tr("Несохранённая работа"), text,
                                 QMessageBox::NoButton, m_workspace.window());
    m_question->setAttribute(Qt::WA_DeleteOnClose);
    m_question->setInformativeText(more);
    return m_question;
}

void RecoveryOffer::tellDamage(const Nodes::RecoveryInfo &info)
{
    m_info = info;
    QMessageBox *box = ask(tr("Программа была прервана, и от несохранённой работы остался только "
                              "повреждённый файл. Открыт проект, каким он был сохранён."),
                           QString::fromStdString(info.damage));
    QPushButton *remove = box->addButton(tr("Удалить повреждённый файл"), QMessageBox::ActionRole);
    box->addButton(tr("Оставить"), QMessageBox::RejectRole);
    connect(remove, &QPushButton::clicked, this, &RecoveryOffer::remove);
    box->open();
}

QString RecoveryOffer::describe() const
{
    const QDateTime saved = QDateTime::fromMSecsSinceEpoch(m_info.saved / 1000);
    const Nodes::ProjectDiff diff(*m_workspace.session().project(), *m_project);
    QString text = tr("Сохранена автоматически %1. Отличия от открытого проекта: %2.")
                       .arg(saved.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")),
                            QString::fromStdString(diff.GetSummary()));
    if (!m_info.earlier.empty())
        text += tr(" Последняя копия повреждена, это предыдущая.");
    const auto now = Nodes::FileStamp::Of(m_workspace.session().file().toStdString());
    if (now.GetDigest() != m_info.base)
        text += tr(" Файл проекта с тех пор изменён: сравните, прежде чем восстанавливать.");
    return text;
}

// False when there is nothing to ask: work on another project, which stood there before this one,
// waits for whoever looks for it on the start page.
bool RecoveryOffer::offer(const Nodes::RecoveryInfo &info)
{
    m_info = info;
    const Nodes::Result read = ReadUnsaved(info, m_project);
    if (!read) {
        if (m_info.damage.empty())
            m_info.damage = read.GetDetail();
        tellDamage(m_info);
        return true;
    }
    if (m_project->GetUuid() != m_workspace.session().project()->GetUuid()) {
        m_project.reset();
        return false;
    }
    if (Nodes::ProjectDiff(*m_workspace.session().project(), *m_project).isEmpty()) {
        remove(); // it is in the file already
        return true;
    }
    m_project->SetDirectory(m_workspace.session().directory().toStdString());
    QMessageBox *box = ask(tr("Программа была прервана. От проекта «%1» осталась несохранённая "
                              "работа.")
                               .arg(QString::fromStdString(info.name)),
                           describe());
    QPushButton *restore = box->addButton(tr("Восстановить"), QMessageBox::AcceptRole);
    QPushButton *compare = box->addButton(tr("Сравнить…"), QMessageBox::ActionRole);
    QPushButton *remove = box->addButton(tr("Удалить её"), QMessageBox::DestructiveRole);
    QPushButton *later = box->addButton(tr("Решить позже"), QMessageBox::RejectRole);
    box->setDefaultButton(restore);
    box->setEscapeButton(later);
    connect(restore, &QPushButton::clicked, this, &RecoveryOffer::restore);
    connect(remove, &QPushButton::clicked, this, &RecoveryOffer::remove);
    connect(compare, &QPushButton::clicked, this, [this] {
        m_question = nullptr; // it closes with the click
        CompareDialog dialog(m_workspace.window());
        dialog.view().setProjects({tr("Сохранённый проект"), m_workspace.session().project()},
                                  {tr("Несохранённая работа"), m_project.get()});
        dialog.exec();
        QTimer::singleShot(0, this, &RecoveryOffer::look); // the question has closed
    });
    box->open();
    return true;
}

void RecoveryOffer::restore()
{
    ProjectSession &session = m_workspace.session();
    const QString file = session.file();
    const Nodes::LoadReport report = session.report();
    const Nodes::FileStamp stamp = session.stamp();
    m_isRestoring = true;
    std::unique_ptr<Nodes::NodesCollection> project = std::move(m_project);
    session.adopt(std::move(project), file, report, stamp);
    session.setRecovered();
    m_autoSave.goOnWith(QString::fromStdString(m_info.file));
    QTimer::singleShot(0, this, [this] { m_isRestoring = false; }); // after the queued look
    m_workspace.tell(Workspace::Info, tr("Несохранённая работа восстановлена. Сохраните проект."));
}

void RecoveryOffer::remove()
{
    m_question = nullptr; // it closes with the click
    Nodes::RecoveryFile::Remove(m_info.file);
    m_project.reset();
    QTimer::singleShot(0, this, &RecoveryOffer::look); // there may be older work
}

} // namespace Editor
