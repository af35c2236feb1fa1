#include "editor/shell/ProjectFiles.h"

#include "editor/project/ProjectSession.h"
#include "editor/project/WriteObstacle.h"
#include "editor/recovery/UnsavedProject.h"
#include "editor/shell/NewProjectDialog.h"
#include "editor/shell/OpenEdit.h"
#include "editor/shell/RecentProjects.h"
#include "editor/workspace/Workspace.h"

#include "nodes/project/ProjectCheck.h"
#include "nodes/project/RecoveryFile.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

namespace Editor {

namespace {

constexpr qint64 spareBytes = 1 << 16; // what a project may have grown by since it was saved
constexpr int toldAtMost = 5;          // findings in a message box

} // namespace

ProjectFiles::ProjectFiles(Workspace &workspace, QObject *parent)
    : QObject(parent), m_workspace(workspace)
{
    connect(&workspace.session(), &ProjectSession::savedLate, this, &ProjectFiles::tellLateSave);
}

void ProjectFiles::fail(const QString &what, const Nodes::Result &why)
{
    QMessageBox box(QMessageBox::Critical, tr("Конфигуратор"), what, QMessageBox::Ok,
                    m_workspace.window());
    box.setInformativeText(QString::fromStdString(why.GetResultTranslated()));
    qWarning("%s %s", qPrintable(what), why.ToString().c_str());
    box.exec();
}

// The reader's result is for the log; its findings are for people.
void ProjectFiles::failToOpen(const QString &fileOrDirectory, const Nodes::Result &why)
{
    const auto problems = std::make_shared<std::vector<Nodes::ProjectProblem>>();
    const Nodes::Result checked = m_workspace.session().onDisk(
        {tr("Проверяется проект «%1»…").arg(QDir::toNativeSeparators(fileOrDirectory)),
         [problems, path = fileOrDirectory.toStdString()] {
             (void)Nodes::ProjectCheck::OfFile(path, *problems); // it has failed
             return Nodes::Result();
         },
         {},
         {}});
    QStringList lines;
    for (const Nodes::ProjectProblem &problem :
         checked ? *problems : std::vector<Nodes::ProjectProblem>()) {
        if (problem.severity == Nodes::ProjectProblem::Error && lines.size() < toldAtMost)
            lines << QString::fromStdString(problem.ToString());
    }
    if (lines.isEmpty())
        lines << QString::fromStdString(why.GetResultTranslated());
    qWarning("%s", why.ToString().c_str());
    QMessageBox box(QMessageBox::Critical, tr("Проект не открыт"),
                    tr("Проект «%1» не открыт.").arg(QDir::toNativeSeparators(fileOrDirectory)),
                    QMessageBox::NoButton, m_workspace.window());
    box.setTextFormat(Qt::PlainText);
    const QString kept = ProjectSession::fileOf(fileOrDirectory) + QStringLiteral(".bak");
    if (QFileInfo::exists(kept))
        lines << tr("Прежняя версия проекта лежит в «%1».").arg(QDir::toNativeSeparators(kept));
    box.setInformativeText(lines.join(QStringLiteral("\n\n")) + QStringLiteral("\n\n") +
                           tr("Проверьте путь и права на чтение или откройте другой проект."));
    const QPushButton *other = box.addButton(tr("Открыть другой…"), QMessageBox::AcceptRole);
    const bool isRecent = RecentProjects::all().contains(fileOrDirectory);
    const QPushButton *unlisted =
        isRecent ? box.addButton(tr("Убрать из списка"), QMessageBox::ActionRole) : nullptr;
    QPushButton *close = box.addButton(tr("Закрыть"), QMessageBox::RejectRole);
    box.setEscapeButton(close);
    box.setDefaultButton(close);
    box.exec();
    if (box.clickedButton() == other)
        openByDialog();
    else if (unlisted && box.clickedButton() == unlisted)
        forget(fileOrDirectory);
}

bool ProjectFiles::createByDialog()
{
    if (!mayLeave())
        return false;
    NewProjectDialog dialog(m_workspace.window());
    if (dialog.exec() != QDialog::Accepted) {
        m_workspace.session().keepOn();
        return false;
    }
    const Nodes::Result made = m_workspace.session().create(dialog.directory(), dialog.name());
    if (!made) {
        m_workspace.session().keepOn();
        fail(tr("Проект «%1» не создан в каталоге «%2».").arg(dialog.name(), dialog.directory()),
             made);
        return false;
    }
    remember(m_workspace.session().directory());
    return true;
}

bool ProjectFiles::openByDialog()
{
    const QString file = QFileDialog::getOpenFileName(
        m_workspace.window(), tr("Открыть проект"), m_workspace.session().directory(),
        tr("Проекты (project.xml);;Файлы XML (*.xml)"));
    return !file.isEmpty() && open(file);
}

bool ProjectFiles::open(const QString &fileOrDirectory)
{
    if (!mayLeave())
        return false;
    const Nodes::Result read = m_workspace.session().open(fileOrDirectory);
    if (!read)
        m_workspace.session().keepOn();
    if (read == Nodes::Result::Cancelled) {
        m_workspace.tell(Workspace::Info, tr("Проект «%1» не открыт: чтение отменено.")
                                              .arg(QDir::toNativeSeparators(fileOrDirectory)));
        return false;
    }
    if (!read) {
        failToOpen(fileOrDirectory, read);
        return false;
    }
    remember(m_workspace.session().directory());
    const std::size_t count = m_workspace.session().report().GetMessages().size();
    if (count == 0)
        m_workspace.tell(Workspace::Info,
                         tr("Открыт проект «%1».").arg(m_workspace.session().name()));
    else
        m_workspace.tell(
            Workspace::Warning,
            tr("В проекте найдены замечания: %1. Смотрите панель «Проблемы».").arg(count));
    return true;
}

bool ProjectFiles::openUnsaved(const Nodes::RecoveryInfo &info)
{
    const QString file = QString::fromStdString(info.project);
    const bool isThere = QFileInfo::exists(file);
    if (isThere && !IsReplaced(info))
        return open(file);
    const QString title =
        isThere
            ? tr("В «%1» теперь другой проект. Сохранить оставшееся от прежнего в пустой каталог")
            : tr("Проекта «%1» больше нет. Сохранить оставшееся от него в пустой каталог");
    const QString directory = QFileDialog::getExistingDirectory(
        m_workspace.window(), title.arg(QDir::toNativeSeparators(file)));
    if (directory.isEmpty())
        return false;
    const Nodes::Result moved =
        Nodes::RecoveryFile::MoveTo(info, directory.toStdString() + "/project.xml");
    if (!moved)
        fail(tr("Несохранённая работа не записана в «%1».").arg(directory), moved);
    return moved && open(directory);
}

bool ProjectFiles::save()
{
    OpenEdit::take();
    if (m_workspace.session().isReadOnly())
        return saveAsByDialog();
    const Nodes::Result saved = m_workspace.session().save();
    if (saved) {
        m_workspace.tell(Workspace::Info, tr("Проект сохранён."));
        return true;
    }
    const QString file = m_workspace.session().file();
    if (m_workspace.session().isWriting()) {
        m_workspace.tell(Workspace::Info, // it is over some time; the title tells the rest
                         tr("Запись в «%1» ещё не закончена: диск отвечает медленно. Пока она не "
                            "закончена, проект считается несохранённым.")
                             .arg(file));
        return false;
    }
    if (saved == Nodes::Result::NotAvailable) { // ask that disk nothing more
        fail(tr("Проект не сохранён: диск, на котором лежит файл «%1», не отвечает. Подождите или "
                "сохраните проект в другой каталог; несохранённая работа хранится отдельно.")
                 .arg(file),
             saved);
        return false;
    }
    return saved != Nodes::Result::Cancelled && offerAnotherPlace(saved);
}

// True when it was saved there.
bool ProjectFiles::offerAnotherPlace(const Nodes::Result &why)
{
    const QFileInfo file(m_workspace.session().file());
    qWarning("%s", why.ToString().c_str());
    QMessageBox box(QMessageBox::Critical, tr("Проект не сохранён"),
                    file.exists() ? tr("Проект не сохранён: файл «%1» остался прежним.")
                                  : tr("Проект не сохранён: файла «%1» больше нет, и записать его "
                                       "туда нельзя."),
                    QMessageBox::Close, m_workspace.window());
    box.setText(box.text().arg(QDir::toNativeSeparators(file.filePath())));
    QString obstacle = WriteObstacle(file.filePath(), file.size() + spareBytes);
    if (obstacle.isEmpty())
        obstacle = tr("Проверьте место на диске и права на каталог. Диск ответил: %1.")
                       .arg(QString::fromStdString(why.GetDetail()));
    box.setInformativeText(obstacle + QLatin1Char('\n') +
                           tr("Работа продолжается; несохранённое хранится отдельно."));
    const QAbstractButton *other =
        box.addButton(tr("Сохранить в другой каталог…"), QMessageBox::AcceptRole);
    box.button(QMessageBox::Close)->setText(tr("Закрыть"));
    box.setDefaultButton(QMessageBox::Close);
    box.exec();
    return box.clickedButton() == other && saveAsByDialog();
}

void ProjectFiles::tellLateSave(const Nodes::Result &result)
{
    if (result)
        m_workspace.tell(Workspace::Info, tr("Запись, которой вы не стали ждать, закончена."));
    else
        m_workspace.tell(Workspace::Error,
                         ProjectSession::explain(
                             tr("Запись, которой вы не стали ждать, не удалась, прежний файл цел. "
                                "Сохраните проект ещё раз или в другой каталог"),
                             result));
}

bool ProjectFiles::saveAsByDialog()
{
    OpenEdit::take();
    const QString directory = QFileDialog::getExistingDirectory(
        m_workspace.window(), tr("Сохранить проект в пустой каталог"),
        QFileInfo(m_workspace.session().directory()).absolutePath());
    if (directory.isEmpty())
        return false;
    const bool hadResources = QFileInfo::exists(m_workspace.session().directory());
    const Nodes::Result saved = m_workspace.session().saveAs(directory);
    if (saved == Nodes::Result::NotAvailable) {
        m_workspace.tell(Workspace::Warning,
                         tr("Запись в «%1» ещё не закончена. Открыт по-прежнему проект из «%2».")
                             .arg(directory, m_workspace.session().directory()));
        return false;
    }
    if (saved == Nodes::Result::Cancelled) {
        m_workspace.tell(Workspace::Warning,
                         tr("Проект сохранён в «%1», но не открыт: чтение отменено. Открыт "
                            "по-прежнему проект из «%2».")
                             .arg(directory, m_workspace.session().directory()));
        return false;
    }
    if (!saved) {
        fail(saved == Nodes::Result::Duplicate
                 ? tr("Проект не сохранён: в каталоге «%1» уже есть проект или другие файлы с "
                      "именами его картинок, звуков или шаблонов. Возьмите пустой каталог.")
                       .arg(directory)
                 : tr("Проект не сохранён в «%1».").arg(directory),
             saved);
        return false;
    }
    remember(directory);
    if (hadResources)
        m_workspace.tell(Workspace::Info, tr("Проект сохранён в «%1».").arg(directory));
    else
        m_workspace.tell(
            Workspace::Warning,
            tr("Проект сохранён в «%1» без картинок, звуков и шаблонов: прежнего каталога "
               "больше нет. Скопируйте их в новый каталог.")
                .arg(directory));
    return true;
}

bool ProjectFiles::close()
{
    if (!mayLeave())
        return false;
    m_workspace.session().close();
    return true;
}

bool ProjectFiles::mayLeave()
{
    OpenEdit::take();
    if (!m_workspace.session().isModified())
        return true;
    QMessageBox box(QMessageBox::Question, tr("Конфигуратор"),
                    tr("Сохранить изменения проекта «%1»?").arg(m_workspace.session().name()),
                    QMessageBox::NoButton, m_workspace.window());
    const QAbstractButton *keep = box.addButton(tr("Сохранить"), QMessageBox::AcceptRole);
    const QAbstractButton *drop = box.addButton(tr("Не сохранять"), QMessageBox::DestructiveRole);
    QPushButton *stay = box.addButton(tr("Отмена"), QMessageBox::RejectRole);
    box.setEscapeButton(stay);
    box.exec();
    if (box.clickedButton() == keep)
        return save();
    if (box.clickedButton() != drop)
        return false;
    m_workspace.session().abandon();
    return true;
}

void ProjectFiles::remember(const QString &directory)
{
    RecentProjects::remember(directory);
    emit recentChanged();
}

void ProjectFiles::forget(const QString &directory)
{
    RecentProjects::forget(directory);
    emit recentChanged();
}

} // namespace Editor
