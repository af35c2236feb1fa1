#include "widgets/reports/display/ReportDialog.h"

#include "widgets/context/ProcessContext.h"
#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/DialogPlacement.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/reports/display/ReportToolBar.h"
#include "widgets/reports/display/qwidgetReportDisplay.h"

#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace Widgets {

namespace {

constexpr QSize usualSize(1000, 720);

QVector<QPointer<ReportDialog>> &opened()
{
    static QVector<QPointer<ReportDialog>> all;
    return all;
}

Nodes::NodesCollection *project()
{
    Nodes::systemCore *core = ProcessContext::model();
    return core ? core->GetNodesCollection() : nullptr;
}

} // namespace

ReportDialog::ReportDialog(QWidget *parent)
    : BasicDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                              Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
      m_area(new QWidget(this))
{
    ApplyDialogLook(*this);
    setSizeGripEnabled(true);
    resize(usualSize);
    m_area->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_area->setMinimumSize(400, 240);
    m_area->installEventFilter(this);
    auto *close = new QPushButton(QStringLiteral("Закрыть"), this);
    MakeTouchable(*close);
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(m_area);
    layout->addWidget(close, 0, Qt::AlignRight);
    layout->activate(); // its area is measured before it is shown
}

ReportDialog::~ReportDialog()
{
    endDisplay();
}

void ReportDialog::open(const DialogRequest &request, unsigned long asker,
                        const Nodes::NodeLink &report, const Period &period,
                        const Nodes::BasicReport::Variables &variables)
{
    opened().removeAll(nullptr);
    QPointer<ReportDialog> dialog;
    for (const QPointer<ReportDialog> &other : qAsConst(opened()))
        if (other->m_asker == asker && other->isVisible())
            dialog = other;
    if (!dialog) {
        dialog = Dialogs::make<ReportDialog>(request);
        if (!dialog)
            return; // the station ends
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->m_asker = asker;
        opened().append(dialog);
    }
    dialog->present(report, period, variables);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void ReportDialog::present(const Nodes::NodeLink &report, const Period &period,
                           const Nodes::BasicReport::Variables &variables)
{
    const auto *node = dynamic_cast<const Nodes::BasicReport *>(report.GetNode());
    const bool isFirst = !m_display;
    if (!node || !makeDisplay(report))
        return;
    const int missing = m_display->toolBar()->sizeHint().width() - m_area->width();
    if (isFirst && missing > 0) { // no key is cut off where the screen has room for all
        resize(width() + missing, height());
        DialogPlacement::fit(*this);
    }
    setWindowTitle(QStringLiteral("Отчёт: ") + QString::fromStdString(node->GetName()));
    ReportChoice choice;
    choice.period = period.kind;
    if (period.isPrevious) {
        const Nodes::ShiftPlan shifts = Nodes::shiftTable::PlanOf(project());
        const Nodes::ReportSpan current = choice.spanAt(Nodes::Clock::Current().Now(), shifts);
        choice.isCurrent = false;
        choice.span = Nodes::PeriodBefore(period.kind, current, shifts);
    }
    m_display->present(choice, variables);
    m_display->start();
    m_display->show();
}

bool ReportDialog::makeDisplay(const Nodes::NodeLink &report)
{
    endDisplay();
    Nodes::NodesCollection *nodes = project();
    if (!nodes)
        return false;
    const Nodes::NodeType type(Nodes::widgetReportDisplay::Code);
    auto made = nodes->CreateDetached(*Nodes::KindTable::Instance().Find(type));
    made->SetName("report");
    const Nodes::NodeLink link(made.get());
    const std::string shown = std::to_string(report.GetNodeId());
    if (!made->SetPropertyText(Nodes::widgetReportDisplay::Prop::Reports.key, shown) ||
        !nodes->HoldClone(made, false))
        return false;
    m_node = link;
    m_display = std::make_unique<qwidgetReportDisplay>(
        dynamic_cast<Nodes::widgetReportDisplay *>(m_node.GetNode()), m_area);
    placeDisplay();
    return true;
}

// The node goes with its project if that goes first: there is nothing to stop then.
void ReportDialog::endDisplay()
{
    if (m_display && m_node.GetNode())
        m_display->stop();
    m_display.reset();
    if (Nodes::NodesCollection *nodes = m_node.GetNodesCollection())
        nodes->TakeClone(m_node);
    m_node = {};
}

// The element takes its place from its node.
void ReportDialog::placeDisplay()
{
    Nodes::ConfigNode *node = m_node.GetNode();
    if (!node || !m_display)
        return;
    const std::pair<const char *, int> places[] = {
        {"x", 0}, {"y", 0}, {"width", m_area->width()}, {"height", m_area->height()}};
    for (const auto &[key, value] : places)
        (void)node->SetPropertyText(key, std::to_string(value)); // in range as any widget's size
    m_display->setGeometry(m_area->rect());
}

bool ReportDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_area && event->type() == QEvent::Resize)
        placeDisplay();
    return BasicDialog::eventFilter(watched, event);
}

} // namespace Widgets
