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
    connect(&session, &ProjectSession::replacing, this,
            [this](const QString &digest) { m_ours = digest; });
    connect(&session, &ProjectSession::closed, this, [this] {
        m_look.forget();
        m_ours.clear(); // opened again it is what was read, whatever is written late
    });
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
    return m_isToAsk && !m_isAsking && !m_workspace.session().isOnDisk() &&
           !QApplication::activeModalWidget() && !QApplication::activePopupWidget() &&
           QGuiApplication::mouseButtons() == Qt::NoButton;
}

void FileGuard::onFound(FileStamp::enState state, const FileStamp &now)
{
    m_seen = now;
    const QString digest = QString::fromStdString(now.GetDigest());
    if (now.Exists() && (now.GetDigest() == m_known.GetDigest() || digest == m_ours))
        m_known = now;
    const bool isNews = state == FileStamp::Gone ||
                        (state == FileStamp::Changed && now.GetDigest() != m_known.GetDigest());
    if (state == FileStamp::Gone) {
        m_isUndecided = false;
        tellThatItIsGone();
    } else if (state == FileStamp::Changed) {
        m_isUndecided = isNews;
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
    m_look.forget();
    if (!isChanged(m_workspace.session().file(), why))
        return;
    m_isUndecided = false;
    const enAnswer answer = decide(true);
    if (answer == KeepMine)
        return;
    why = Nodes::Result(Nodes::Result::Cancelled, "the file was changed by another program");
    if (answer == Reload)
        QMetaObject::invokeMethod(this, &FileGuard::reload, Qt::QueuedConnection);
}

// Fails also when nobody has waited for the disk.
bool FileGuard::isChanged(const QString &file, Nodes::Result &why)
{
    struct Look
    {
        FileStamp known;
        FileStamp now;
        FileStamp::enState state;
    };
    const auto look = std::make_shared<Look>(Look{m_known, m_known, FileStamp::Same});
    why = m_workspace.session().onDisk({tr("Проверяется файл «%1»…").arg(file),
                                        [look, path = file.toStdString()] {
                                            look->state = look->known.Compare(path);
                                            if (look->state == FileStamp::Changed)
                                                look->now = FileStamp::Of(path);
                                            return Nodes::Result();
                                        },
                                        {},
                                        {}});
    if (!why || look->state != FileStamp::Changed ||
        QString::fromStdString(look->now.GetDigest()) == m_ours)
        return false;
    m_seen = look->now;
    return true;
}

// Whoever compares decides later: he is asked again when he comes back or saves.
FileGuard::enAnswer FileGuard::decide(bool isSaving)
{
    m_isAsking = true;
    const enAnswer answer = m_asker(isSaving);
    m_isAsking = false;
    if (answer != Compare)
        return answer;
    m_isUndecided = true;
    CompareWithFile(m_workspace, m_workspace.session().file());
    if (isSaving)
        m_workspace.tell(Workspace::Warning,
                         tr("Проект не сохранён: сравните его с файлом и сохраните ещё раз."));
    return Cancel;
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
    const Nodes::Result read = session.read(file, found);
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
