#include "editor/signals/AlarmsDialog.h"
#include "editor/signals/ArchiveGroups.h"
#include "editor/signals/ImportDialog.h"
#include "editor/signals/PatternDialog.h"
#include "editor/signals/RenameDialog.h"
#include "editor/signals/SheetModel.h"
#include "editor/signals/SheetPage.h"
#include "editor/usages/Removal.h"
#include "editor/workspace/TableFile.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFileDialog>

namespace Editor {

namespace {

constexpr qint64 megabyte = 1024 * 1024;
constexpr qint64 largestFile = 64 * megabyte;

} // namespace

void SheetPage::addByPattern()
{
    if (!m_model->scope())
        return;
    PatternDialog dialog(*m_model, this);
    if (dialog.exec() == QDialog::Accepted && m_model->scope())
        tell(SheetEdits::addNodes(m_workspace, *m_model, dialog.names(), dialog.kind(),
                                  dialog.column(), dialog.first(), dialog.step()));
}

void SheetPage::renameByPattern()
{
    const Nodes::NodeLinks nodes = selectedNodes();
    if (nodes.empty())
        return m_workspace.tell(Workspace::Info, tr("Выберите строки, которые переименовать."));
    RenameDialog dialog(nodes, this);
    if (dialog.exec() == QDialog::Accepted)
        tell(SheetEdits::rename(m_workspace, nodes, dialog.names()));
}

void SheetPage::removeSelected()
{
    const Nodes::NodeLinks nodes = selectedNodes();
    if (nodes.empty())
        return;
    if (const auto plan = askRemoval(m_workspace, nodes))
        m_workspace.push(makeRemoval(*plan));
}

void SheetPage::importFile()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Импорт таблицы"), {}, tr("Таблицы CSV (*.csv *.txt *.tsv);;Все файлы (*)"));
    if (path.isEmpty() || !m_model->scope())
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return m_workspace.tell(Workspace::Error,
                                tr("Файл «%1» не прочитан: %2.").arg(path, file.errorString()));
    if (file.size() > largestFile)
        return m_workspace.tell(Workspace::Error,
                                tr("Файл «%1» больше %2 МБ; разделите таблицу на части.")
                                    .arg(path)
                                    .arg(largestFile / megabyte));
    importBytes(file.readAll());
}

void SheetPage::importBytes(const QByteArray &bytes)
{
    ImportDialog dialog(*m_model, bytes, this);
    if (dialog.exec() != QDialog::Accepted || !m_model->scope())
        return;
    Nodes::SheetPlan plan = dialog.takePlan();
    SheetEdits::carryOut(m_workspace, plan, tr("Импорт таблицы"));
    tell(plan.refusals);
}

void SheetPage::pasteMapped()
{
    const QString text = QApplication::clipboard()->text();
    if (text.isEmpty())
        return m_workspace.tell(Workspace::Info, tr("В буфере обмена нет текста."));
    if (m_model->scope())
        importBytes(text.toUtf8());
}

void SheetPage::exportFile()
{
    if (m_model->scope())
        TableFile::save(m_workspace, this, tr("Экспорт таблицы"), m_model->rowCount(),
                        SheetEdits::exportTable(*m_model));
}

void SheetPage::setAlarms()
{
    const Nodes::NodeLinks nodes = selectedNodes();
    if (nodes.empty())
        return m_workspace.tell(Workspace::Info,
                                tr("Выберите строки сигналов, которым задать тревоги."));
    AlarmsDialog dialog(int(nodes.size()), this);
    if (dialog.exec() != QDialog::Accepted || !m_model->scope())
        return;
    SheetEdits::Refusals refusals;
    const Nodes::TextTable table = LimitAlarms::makeTable(
        *m_model->scope(), nodes, dialog.alarms(), dialog.deadband(), dialog.delay(), refusals);
    const SheetEdits::Refusals others =
        SheetEdits::setAlarms(m_workspace, *m_model->scope(), table);
    refusals.insert(refusals.end(), others.begin(), others.end());
    tell(refusals);
}

void SheetPage::archiveSelected()
{
    ArchiveGroups::add(m_workspace, selectedNodes());
}

} // namespace Editor
