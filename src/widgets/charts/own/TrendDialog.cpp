#include "widgets/charts/own/TrendDialog.h"

#include "widgets/charts/elements/qwidgetChartHistory.h"
#include "widgets/charts/own/OwnTrend.h"
#include "widgets/charts/own/SignalList.h"
#include "widgets/charts/own/TrendNodes.h"
#include "widgets/context/ProcessContext.h"
#include "widgets/dialogs/DialogLook.h"

#include "nodes/charts/widgetChartHistory.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace Widgets {

namespace {

constexpr QSize usualSize(960, 640);
constexpr int listWidth = 300;

} // namespace

TrendDialog::TrendDialog(QWidget *parent)
    // A dialog stays above the window it was called from; none is minimised where no bar of the
    // desktop would bring it back.
    : BasicDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                              Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
      m_area(new QWidget(this)),
      m_list(new SignalList(this))
{
    ApplyDialogLook(*this);
    setAcceptDrops(true);
    setSizeGripEnabled(true);
    resize(usualSize);
    m_list->setFixedWidth(listWidth);
    m_list->hide();
    m_area->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_area->setMinimumSize(200, 150);
    m_area->installEventFilter(this);
    auto *upper = new QHBoxLayout;
    upper->addWidget(m_list);
    upper->addWidget(m_area);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addLayout(upper);
    layout->addWidget(buildButtons());
    connect(m_list, &SignalList::toggled, this, &TrendDialog::change);
    if (const Nodes::systemCore *model = ProcessContext::model())
        if (const Nodes::NodesCollection *project = model->GetNodesCollection())
            m_list->setProject(*project);
}

TrendDialog::~TrendDialog()
{
    endChart();
}

// The nodes go with their project if that goes first: there is nothing to stop then.
void TrendDialog::endChart()
{
    if (m_chart && m_nodes->chart())
        m_chart->stop();
    m_chart.reset();
    m_nodes.reset();
}

QWidget *TrendDialog::buildButtons()
{
    auto *row = new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_choose = new QPushButton(QStringLiteral("Сигналы"), row);
    m_choose->setCheckable(true);
    m_toOwn = new QPushButton(QStringLiteral("В свой тренд"), row);
    auto *close = new QPushButton(QStringLiteral("Закрыть"), row);
    for (QPushButton *button : {m_choose, m_toOwn, close}) {
        MakeTouchable(*button);
        button->setAutoDefault(false);
    }
    connect(m_choose, &QPushButton::toggled, m_list, &QWidget::setVisible);
    connect(m_toOwn, &QPushButton::clicked, this, [this] { OwnTrend::add(m_shown); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    layout->addWidget(m_choose);
    layout->addWidget(m_toOwn);
    layout->addStretch();
    layout->addWidget(close);
    return row;
}

void TrendDialog::setSignals(const Nodes::NodeLinks &shown, bool isOwn)
{
    m_isOwn = isOwn;
    m_toOwn->setVisible(!isOwn);
    if (shown.empty())
        m_choose->setChecked(true);
    setShown(shown);
}

void TrendDialog::setShown(const Nodes::NodeLinks &shown)
{
    m_shown = shown;
    m_list->setTicked(shown);
    const auto *first =
        shown.empty() ? nullptr : dynamic_cast<const Nodes::BasicSignal *>(shown.front().GetNode());
    setWindowTitle(m_isOwn || !first ? QStringLiteral("Свой тренд")
                                     : QStringLiteral("Тренд: ") +
                                           QString::fromStdString(TrendNodes::NameOf(*first)));
    rebuild();
}

void TrendDialog::change(unsigned long signal, bool isShown)
{
    Nodes::NodeLinks shown = m_shown;
    const auto known = std::find_if(shown.begin(), shown.end(), [signal](const auto &link) {
        return link.GetNodeId() == signal;
    });
    if (isShown == (known != shown.end()))
        return;
    if (isShown)
        shown.emplace_back(signal);
    else
        shown.erase(known);
    setShown(shown);
    if (m_isOwn)
        OwnTrend::keep(m_shown);
}

// Another set of signals is another chart; the window of time stays that of the one before.
void TrendDialog::rebuild()
{
    endChart();
    Nodes::systemCore *model = ProcessContext::model();
    Nodes::NodesCollection *project = model ? model->GetNodesCollection() : nullptr;
    if (!project || m_shown.empty())
        return;
    m_nodes = std::make_unique<TrendNodes>(*project, windowTitle().toStdString(), m_shown);
    if (!m_nodes->chart())
        return;
    m_chart = std::make_unique<qwidgetChartHistory>(m_nodes->chart(), m_area);
    placeChart();
    m_chart->start();
    m_chart->show();
}

// The element takes its place from its node.
void TrendDialog::placeChart()
{
    Nodes::widgetChartHistory *node = m_nodes ? m_nodes->chart() : nullptr;
    if (!node || !m_chart)
        return;
    const std::pair<const char *, int> places[] = {
        {"x", 0}, {"y", 0}, {"width", m_area->width()}, {"height", m_area->height()}};
    for (const auto &[key, value] : places)
        (void)node->SetPropertyText(key, std::to_string(value)); // in range as any widget's size
    m_chart->setGeometry(m_area->rect());
}

bool TrendDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_area && event->type() == QEvent::Resize)
        placeChart();
    return BasicDialog::eventFilter(watched, event);
}

void TrendDialog::dragEnterEvent(QDragEnterEvent *event)
{
    if (!SignalList::idsOf(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void TrendDialog::dropEvent(QDropEvent *event)
{
    for (const unsigned long signal : SignalList::idsOf(*event->mimeData()))
        change(signal, true);
    event->acceptProposedAction();
}

} // namespace Widgets
