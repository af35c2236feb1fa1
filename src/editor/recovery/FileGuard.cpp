#include "editor/recovery/FileGuard.h"

#include "editor/compare/CompareCommands.h"
#include "editor/project/ProjectSession.h"
#include "editor/project/ReadProject.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/NodesCollection.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

namespace Editor {

using Nodes::FileStamp;

FileGuard::FileGuard(Workspace &workspace, QObject *parent)
    : QObject(parent), m_workspace(workspace)
{
    m_asker = [this](bool isSaving) { return ask(isSaving); };
    ProjectSession &session = workspace.session();
    connect(&session, &ProjectSession::opened, this, &FileGuard::begin);
    connect(&session, &ProjectSession::saved, this, &FileGuard::begin);
    connect(&session, &ProjectSession::aboutToSave, this, &FileGuard::checkSave);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive)
                    look();
            });
}

void FileGuard::begin()
{
    m_known = FileStamp::Of(m_workspace.session().file().toStdString());
    m_seen = m_known;
}

void FileGuard::look()
{
    const ProjectSession &session = m_workspace.session();
    const std::string file = session.file().toStdString();
    if (m_isAsking || !session.isOpen() || m_seen.Compare(file) == FileStamp::Same)
        return;
    const bool isGone = m_seen.Compare(file) == FileStamp::Gone;
    m_seen = FileStamp::Of(file);
    if (isGone) {
        const QString text =
            QFileInfo::exists(session.directory())
                ? tr("Файла проекта «%1» больше нет. Работа продолжается; сохраните проект сюда же "
                     "или в другой каталог.")
                : tr("Каталога, где был файл проекта «%1», больше нет. Работа продолжается; "
                     "сохраните проект в другой каталог.");
        m_workspace.tell(Workspace::Warning, text.arg(session.file()));
        return;
    }
    if (m_known.Compare(file) == FileStamp::Same)
        return;
    if (decide(false) == Reload)
        reload();
}

void FileGuard::checkSave(Nodes::Result &why)
{
    const std::string file = m_workspace.session().file().toStdString();
    if (!why || m_known.Compare(file) != FileStamp::Changed)
        return;
    m_seen = FileStamp::Of(file);
    const enAnswer answer = decide(true);
    if (answer == KeepMine)
        return;
    why = Nodes::Result(Nodes::Result::Cancelled, "the file was changed by another program");
    if (answer == Reload)
        QMetaObject::invokeMethod(this, &FileGuard::reload, Qt::QueuedConnection);
}

// Whoever has compared knows what to do: he is asked again.
FileGuard::enAnswer FileGuard::decide(bool isSaving)
{
    m_isAsking = true;
    enAnswer answer = m_asker(isSaving);
    for (; answer == Compare; answer = m_asker(isSaving))
        CompareWithFile(m_workspace, m_workspace.session().file());
    m_isAsking = false;
    return answer;
}

FileGuard::enAnswer FileGuard::ask(bool isSaving)
{
    const ProjectSession &session = m_workspace.session();
    QMessageBox box(QMessageBox::Warning, tr("Файл проекта изменён"),
                    tr("Файл «%1» изменён другой программой после того, как вы его открыли.")
                        .arg(session.file()),
                    QMessageBox::NoButton, m_workspace.window());
    if (session.isModified())
        box.setInformativeText(tr("У вас есть несохранённые изменения: перечитав файл, вы их "
                                  "потеряете. Своё можно сохранить и в другой каталог."));
    const QAbstractButton *compare = box.addButton(tr("Сравнить…"), QMessageBox::ActionRole);
    const QAbstractButton *reload =
        box.addButton(tr("Перечитать файл"), QMessageBox::DestructiveRole);
    QAbstractButton *mine = box.addButton(
        isSaving ? tr("Сохранить поверх") : tr("Оставить как есть"), QMessageBox::AcceptRole);
    QAbstractButton *stay =
        isSaving ? box.addButton(tr("Не сохранять"), QMessageBox::RejectRole) : mine;
    box.setDefaultButton(qobject_cast<QPushButton *>(stay));
    box.setEscapeButton(stay);
    box.exec();
    if (box.clickedButton() == compare)
        return Compare;
    if (box.clickedButton() == reload)
        return Reload;
    return box.clickedButton() == mine ? KeepMine : Cancel;
}

void FileGuard::reload()
{
    ProjectSession &session = m_workspace.session();
    const QString file = session.file();
    ReadProject found;
    const Nodes::Result read = found.read(file);
    if (!read) {
        m_workspace.tell(Workspace::Error,
                         ProjectSession::explain(tr("Проект не перечитан, остался прежним"), read));
        return;
    }
    session.abandon();
    session.adopt(std::move(found), file);
    m_workspace.tell(Workspace::Info, tr("Проект перечитан с диска."));
}

} // namespace Editor
