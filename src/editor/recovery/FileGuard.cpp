#include "editor/recovery/FileGuard.h"

#include "editor/compare/CompareCommands.h"
#include "editor/project/ProjectSession.h"
#include "editor/project/ReadProject.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/NodesCollection.h"

#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

namespace Editor {

using Nodes::FileStamp;

namespace {

constexpr int watchPeriod = 5000; // ms

} // namespace

FileGuard::FileGuard(Workspace &workspace, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_look(nullptr)
{
    m_asker = [this](bool isSaving) { return ask(isSaving); };
    ProjectSession &session = workspace.session();
    connect(&session, &ProjectSession::opened, this, &FileGuard::begin);
    connect(&session, &ProjectSession::saved, this, &FileGuard::begin);
    connect(&session, &ProjectSession::closed, &m_look, &FileLook::forget);
    connect(&session, &ProjectSession::aboutToSave, this, &FileGuard::checkSave);
    connect(&m_look, &FileLook::found, this, &FileGuard::onFound);
    connect(&m_look, &FileLook::stuck, this, [this] {
        m_workspace.tell(Workspace::Warning,
                         tr("Диск, на котором лежит проект, не отвечает. Работа продолжается, "
                            "несохранённое хранится отдельно; сохранить проект можно в другой "
                            "каталог."));
    });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive)
                    look();
            });
    connect(&m_timer, &QTimer::timeout, this, &FileGuard::watch);
    m_timer.start(watchPeriod);
}

void FileGuard::begin()
{
    m_look.forget();
    m_known = m_workspace.session().stamp();
    m_seen = m_known;
    m_isUndecided = false;
    m_isToAsk = false;
}

void FileGuard::look()
{
    m_isToAsk = true;
    startLook();
}

void FileGuard::watch()
{
    startLook();
}

void FileGuard::startLook()
{
    const ProjectSession &session = m_workspace.session();
    if (!m_isAsking && session.isOpen() && !session.file().isEmpty())
        m_look.start(session.file(), m_seen);
}

// Nobody is asked in the middle of something else: a key that he types would be the answer.
bool FileGuard::mayAsk() const
{
    return m_isToAsk && !m_isAsking && !QApplication::activeModalWidget() &&
           !QApplication::activePopupWidget() && QGuiApplication::mouseButtons() == Qt::NoButton;
}

void FileGuard::onFound(FileStamp::enState state, const FileStamp &now)
{
    const bool isNews = state != FileStamp::Same;
    m_seen = now;
    if (now.Exists() && now.GetDigest() == m_known.GetDigest())
        m_known = now;
    if (state == FileStamp::Gone) {
        m_isUndecided = false;
        tellThatItIsGone();
    } else if (isNews) {
        m_isUndecided = now.GetDigest() != m_known.GetDigest();
    }
    if (m_isUndecided && mayAsk())
        onChanged();
    else if (m_isUndecided && isNews)
        m_workspace.tell(Workspace::Warning,
                         tr("Файл «%1» изменён другой программой. При сохранении можно будет "
                            "сравнить его со своей работой, перечитать или записать поверх.")
                             .arg(m_workspace.session().file()));
    m_isToAsk = false;
}

void FileGuard::onChanged()
{
    m_isUndecided = false;
    if (decide(false) == Reload)
        reload();
}

void FileGuard::tellThatItIsGone()
{
    const ProjectSession &session = m_workspace.session();
    const QString text =
        QFileInfo::exists(session.directory())
            ? tr("Файла проекта «%1» больше нет. Работа продолжается; сохраните проект сюда же "
                 "или в другой каталог.")
            : tr("Каталога, где был файл проекта «%1», больше нет. Работа продолжается; "
                 "сохраните проект в другой каталог.");
    m_workspace.tell(Workspace::Warning, text.arg(session.file()));
}

void FileGuard::checkSave(Nodes::Result &why)
{
    if (!why)
        return;
    if (m_look.isStuck()) {
        why = Nodes::Result(Nodes::Result::NotAvailable, "the disk does not answer");
        return;
    }
    const std::string file = m_workspace.session().file().toStdString();
    if (m_known.Compare(file) != FileStamp::Changed)
        return;
    m_look.forget();
    m_seen = FileStamp::Of(file);
    m_isUndecided = false;
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
