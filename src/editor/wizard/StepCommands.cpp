#include "editor/wizard/StepCommands.h"

#include "editor/project/ProjectSession.h"
#include "editor/wizard/ChoiceDialog.h"
#include "editor/wizard/NewWindowDialog.h"
#include "editor/wizard/ProjectSteps.h"
#include "editor/wizard/StationScreens.h"
#include "editor/workspace/DocumentView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "utils/undo/CommandGroup.h"

#include <QCoreApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace Editor {

namespace {

constexpr int modbusPort = 502;

QString tr(const char *text)
{
    return QCoreApplication::translate("StepCommands", text);
}

ProjectSteps steps(Workspace &workspace)
{
    return ProjectSteps(*workspace.session().project());
}

bool isScreen(const Nodes::NodeLink &node)
{
    if (!node.isValid())
        return false;
    const auto family = node.GetNodeType().GetFamily();
    return family == Nodes::NodeType::TypeWindow || family == Nodes::NodeType::TypeComposition;
}

// The windows that a template makes or an action opens are no place to begin.
bool addFrame(Workspace &workspace)
{
    const Nodes::NodeLinks windows = steps(workspace).windows();
    if (windows.empty()) {
        StepCommands::addWindow(workspace); // makes the frame with it
        return steps(workspace).hasFrame();
    }
    Nodes::NodeLinks shown = windows;
    if (windows.size() > 1) {
        ChoiceDialog dialog(tr("Какое окно показать при запуске"), windows, false,
                            workspace.window());
        if (dialog.exec() != QDialog::Accepted)
            return false;
        shown = dialog.chosen();
    }
    return !shown.empty() && workspace.push(steps(workspace).addFrame(shown.front(), 1));
}

} // namespace

bool StepCommands::hasFrame(Workspace &workspace)
{
    if (steps(workspace).hasFrame())
        return true;
    const QString text = tr("В проекте нет ни одного фрейма: станции оператора нечего показать.");
    if (!mayEdit(workspace)) {
        workspace.tell(Workspace::Error, text);
        return false;
    }
    QMessageBox box(QMessageBox::Question, tr("Запуск"), text, QMessageBox::NoButton,
                    workspace.window());
    box.setInformativeText(tr("Фрейм говорит, какие окна открываются на каком дисплее."));
    QPushButton *make = box.addButton(
        steps(workspace).windows().empty() ? tr("Создать окно и фрейм…") : tr("Создать фрейм"),
        QMessageBox::AcceptRole);
    QPushButton *stay = box.addButton(tr("Отмена"), QMessageBox::RejectRole);
    box.setDefaultButton(make);
    box.setEscapeButton(stay);
    box.exec();
    return box.clickedButton() == make && addFrame(workspace);
}

bool StepCommands::mayEdit(Workspace &workspace)
{
    return workspace.session().isOpen() && !workspace.session().isReadOnly();
}

bool StepCommands::mayAddReadings(Workspace &workspace)
{
    return mayEdit(workspace) && steps(workspace).hasSignals() &&
           !steps(workspace).windows().empty();
}

void StepCommands::addSimulator(Workspace &workspace)
{
    if (workspace.push(steps(workspace).addSimulator()))
        workspace.tell(Workspace::Info,
                       tr("Добавлен имитатор с тремя сигналами: температура, давление, расход."));
}

void StepCommands::addModbus(Workspace &workspace)
{
    const Nodes::NodeLinks before = steps(workspace).signalNodes();
    if (!workspace.push(
            steps(workspace).addModbus(tr("Контроллер"), QStringLiteral("127.0.0.1"), modbusPort)))
        return;
    for (const Nodes::NodeLink &signal : steps(workspace).signalNodes()) {
        if (std::find(before.begin(), before.end(), signal) != before.end())
            continue;
        workspace.reveal(Nodes::NodeLink(signal->GetParent()->GetParent()));
        workspace.open(workspace.selection().nodes().front());
        return;
    }
}

void StepCommands::addWindow(Workspace &workspace)
{
    NewWindowDialog dialog(tr("Окно %1").arg(steps(workspace).windows().size() + 1),
                           workspace.window());
    // A second one on the same display would lie above the first, with no way back.
    dialog.setDisplay(steps(workspace).hasWindow() ? 0 : 1, true);
    if (dialog.exec() != QDialog::Accepted)
        return;
    Nodes::NodeLink made;
    if (workspace.push(
            steps(workspace).addWindow(dialog.name(), dialog.size(), dialog.display(), made)))
        workspace.open(made);
}

void StepCommands::addScreens(Workspace &workspace)
{
    const StationScreens screens(*workspace.session().project());
    int display = 1;
    while (screens.hasFrame(display))
        ++display;
    NewWindowDialog dialog(
        QString::fromStdString(workspace.session().project()->GetRoot()->GetName()),
        workspace.window());
    dialog.setWindowTitle(tr("Экраны станции"));
    dialog.setDisplay(display, false);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (screens.hasFrame(dialog.display())) {
        workspace.tell(Workspace::Warning,
                       tr("На дисплее %1 уже есть экраны: выберите другой дисплей или удалите его "
                          "фрейм.")
                           .arg(dialog.display()));
        return;
    }
    Nodes::NodeLink overview;
    if (!workspace.push(screens.build(dialog.name(), dialog.size(), dialog.display(), overview)))
        return;
    workspace.open(overview);
    workspace.tell(Workspace::Info,
                   tr("Добавлены обзор, тренды, тревоги, события, отчёты и кнопки "
                      "переходов. Новая страница: «Проект», «Добавить страницу…»."));
}

bool StepCommands::mayAddPage(Workspace &workspace)
{
    return mayEdit(workspace) && StationScreens(*workspace.session().project()).field().isValid();
}

void StepCommands::addPage(Workspace &workspace)
{
    const QString name = QInputDialog::getText(workspace.window(), tr("Новая страница"),
                                               tr("Название страницы и её кнопки"))
                             .trimmed();
    if (name.isEmpty())
        return;
    if (name.contains(QLatin1Char('/'))) {
        workspace.tell(Workspace::Warning, tr("Страница не добавлена: в названии не бывает «/»."));
        return;
    }
    Nodes::NodeLink made;
    if (workspace.push(StationScreens(*workspace.session().project()).addPage(name, made)))
        workspace.open(made);
}

void StepCommands::addReadings(Workspace &workspace)
{
    const ProjectSteps project = steps(workspace);
    Nodes::NodeLink window =
        workspace.document() ? workspace.document()->node() : Nodes::NodeLink();
    const Nodes::NodeLinks windows = project.windows();
    if (!isScreen(window) && !windows.empty())
        window = windows.front();
    if (!isScreen(window))
        return;
    ChoiceDialog dialog(tr("Какие сигналы показать"), project.signalNodes(), true,
                        workspace.window());
    if (dialog.exec() != QDialog::Accepted)
        return;
    workspace.open(window);
    if (const Nodes::NodeLinks chosen = dialog.chosen(); !chosen.empty())
        workspace.push(project.addReadings(window, chosen));
}

} // namespace Editor
