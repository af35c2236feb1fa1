#include "editor/wizard/FirstSteps.h"

#include "editor/project/ProjectSession.h"
#include "editor/wizard/ProjectSteps.h"
#include "editor/wizard/StepCommands.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimerEvent>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr int pageWidth = 640;
constexpr int refreshPause = 200; // ms: a step may change thousands of nodes

QFont scaled(const QFont &font, double factor)
{
    QFont changed = font;
    changed.setPointSizeF(font.pointSizeF() * factor);
    return changed;
}

bool hasSignals(Workspace &workspace)
{
    return ProjectSteps(*workspace.session().project()).hasSignals();
}

bool hasWindow(Workspace &workspace)
{
    return ProjectSteps(*workspace.session().project()).hasWindow();
}

bool hasReading(Workspace &workspace)
{
    return ProjectSteps(*workspace.session().project()).hasReading();
}

bool isSaved(Workspace &workspace)
{
    return hasReading(workspace) && !workspace.session().isModified();
}

} // namespace

FirstSteps::FirstSteps(Workspace &workspace, QWidget *parent)
    : QScrollArea(parent), m_workspace(workspace)
{
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    auto *page = new QWidget(this);
    auto *column = new QVBoxLayout;
    auto *title = new QLabel(tr("От пустого проекта к живому значению"), page);
    title->setFont(scaled(font(), 1.4));
    column->addStretch(1);
    column->addWidget(title);
    Step &source = addStep(*column, tr("1. Откуда берутся данные"),
                           tr("Имитатор показывает значения без оборудования; Modbus TCP читает "
                              "контроллер."),
                           &hasSignals);
    connect(addButton(source, tr("Добавить имитатор"), "stepSimulator"), &QPushButton::clicked,
            this, [this] { StepCommands::addSimulator(m_workspace); });
    connect(addButton(source, tr("Добавить Modbus TCP"), "stepModbus"), &QPushButton::clicked, this,
            [this] { StepCommands::addModbus(m_workspace); });
    Step &window = addStep(*column, tr("2. Экраны"),
                           tr("Готовый набор: обзор, тренды, тревоги, события и отчёты с кнопками "
                              "переходов. Или одно пустое окно."),
                           &hasWindow);
    connect(addButton(window, tr("Экраны станции…"), "stepScreens"), &QPushButton::clicked, this,
            [this] { StepCommands::addScreens(m_workspace); });
    connect(addButton(window, tr("Добавить окно…"), "stepWindow"), &QPushButton::clicked, this,
            [this] { StepCommands::addWindow(m_workspace); });
    Step &reading =
        addStep(*column, tr("3. Показание"),
                tr("Элемент с сигналом. То же самое делают мышью: элемент перетаскивают "
                   "из панели «Элементы», сигнал — из дерева проекта на элемент."),
                &hasReading);
    connect(addButton(reading, tr("Добавить показания…"), "stepReading"), &QPushButton::clicked,
            this, [this] { StepCommands::addReadings(m_workspace); });
    Step &running =
        addStep(*column, tr("4. Сохранить и запустить"),
                tr("Станция оператора откроет проект и покажет живые значения (F5)."), &isSaved);
    connect(addButton(running, tr("Запуск"), "stepRun"), &QPushButton::clicked, this,
            &FirstSteps::runRequested);
    column->addStretch(2);
    auto *grid = new QGridLayout(page);
    grid->setColumnStretch(0, 1);
    grid->setColumnMinimumWidth(1, pageWidth);
    grid->setColumnStretch(2, 1);
    grid->addLayout(column, 0, 1);
    setWidget(page);
    connect(&workspace.session(), &ProjectSession::opened, this, &FirstSteps::watchProject);
    connect(&workspace.session(), &ProjectSession::aboutToClose, this, [this] { m_changes = {}; });
    connect(&workspace, &Workspace::commandsChanged, this, &FirstSteps::refresh);
}

FirstSteps::~FirstSteps() = default;

FirstSteps::Step &FirstSteps::addStep(QVBoxLayout &column, const QString &title,
                                      const QString &text, bool (*isDone)(Workspace &workspace))
{
    auto *head = new QLabel(title, this);
    head->setFont(scaled(font(), 1.15));
    auto *mark = new QLabel(this);
    auto *line = new QHBoxLayout;
    line->addWidget(head);
    line->addWidget(mark);
    line->addStretch();
    auto *body = new QLabel(text, this);
    body->setWordWrap(true);
    column.addSpacing(16);
    column.addLayout(line);
    column.addWidget(body);
    auto *buttons = new QHBoxLayout;
    column.addLayout(buttons);
    m_steps.append({mark, buttons, isDone, {}});
    return m_steps.last();
}

QPushButton *FirstSteps::addButton(Step &step, const QString &text, const char *objectName)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(objectName));
    step.line->insertWidget(step.buttons.size(), button);
    if (step.buttons.isEmpty())
        step.line->addStretch();
    step.buttons.append(button);
    return button;
}

void FirstSteps::watchProject()
{
    m_changes = m_workspace.session().project()->ConnectChanged([this](const Nodes::NodeChange &) {
        if (!m_timer && isVisible())
            m_timer = startTimer(refreshPause);
    });
    refresh();
}

void FirstSteps::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer) {
        QScrollArea::timerEvent(event);
        return;
    }
    killTimer(m_timer);
    m_timer = 0;
    refresh();
}

void FirstSteps::refresh()
{
    if (!m_workspace.session().isOpen())
        return;
    const bool mayEdit = StepCommands::mayEdit(m_workspace);
    bool isNext = true; // what comes next stands out
    for (Step &step : m_steps) {
        const bool isDone = step.isDone(m_workspace);
        step.mark->setText(isDone ? tr("✓ готово") : QString());
        for (QPushButton *button : qAsConst(step.buttons)) {
            button->setEnabled(mayEdit || &step == &m_steps.last());
            button->setDefault(isNext && !isDone);
        }
        isNext = isNext && isDone;
    }
}

} // namespace Editor
