#include "widgets/elements/health/NuisanceList.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/elements/health/HealthTable.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace Widgets {

namespace {

const QString kindNames[] = {QStringLiteral("Частые"), QStringLiteral("Дребезг"),
                             QStringLiteral("Мимолётные"), QStringLiteral("Стоящие")};

} // namespace

NuisanceList::NuisanceList(QWidget *parent)
    : QWidget(parent), m_model(new NuisanceModel(this)), m_table(new QTableView(this))
{
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    for (std::size_t i = 0; i < m_kinds.size(); ++i) {
        m_kinds[i] = addButton(kindNames[i]);
        m_kinds[i]->setCheckable(true);
        buttons->addWidget(m_kinds[i]);
        connect(m_kinds[i], &QPushButton::clicked, this,
                [this, i] { show(NuisanceModel::Kind(i)); });
    }
    buttons->addStretch();
    m_try = addButton(QStringLiteral("Что если…"));
    m_jump = addButton(QStringLiteral("К источнику"));
    buttons->addWidget(m_try);
    buttons->addWidget(m_jump);
    m_table->setModel(m_model);
    PrepareHealthTable(*m_table, TouchSize, NuisanceModel::Name);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addLayout(buttons);
    layout->addWidget(m_table);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &NuisanceList::onSelected);
    connect(m_model, &QAbstractItemModel::modelReset, this, &NuisanceList::onSelected);
    connect(m_jump, &QPushButton::clicked, this, [this] { emit jumpPressed(selected()); });
    connect(m_try, &QPushButton::clicked, this, [this] { emit tryPressed(selected()); });
    show(NuisanceModel::Frequent);
}

QPushButton *NuisanceList::addButton(const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setAutoDefault(false);
    MakeTouchable(*button);
    return button;
}

void NuisanceList::setTests(Test canJump, Test canTry)
{
    m_canJump = std::move(canJump);
    m_canTry = std::move(canTry);
    onSelected();
}

void NuisanceList::setFigures(const std::shared_ptr<const Nodes::AlarmFigures> &figures)
{
    m_figures = figures;
    fill();
}

void NuisanceList::show(NuisanceModel::Kind kind)
{
    m_kind = kind;
    for (std::size_t i = 0; i < m_kinds.size(); ++i)
        m_kinds[i]->setChecked(i == std::size_t(kind));
    fill();
}

// A refresh keeps what the operator has selected.
void NuisanceList::fill()
{
    const Nodes::NodeLink before = selected();
    m_model->setAlarms(m_figures ? *m_figures : Nodes::AlarmFigures(), m_kind);
    if (!before.isEmpty())
        select(before);
    if (!m_figures)
        return;
    const std::size_t counts[] = {m_figures->alarms.size(), m_figures->chatteringAlarms,
                                  m_figures->fleetingAlarms, m_figures->standingAlarms};
    for (std::size_t i = 0; i < m_kinds.size(); ++i) {
        m_kinds[i]->setText(QStringLiteral("%1: %2").arg(kindNames[i]).arg(counts[i]));
        MakeTouchable(*m_kinds[i]);
    }
}

void NuisanceList::select(const Nodes::NodeLink &alarm)
{
    const int row = m_model->rowOf(alarm);
    if (row < 0)
        return;
    m_table->selectRow(row);
    m_table->scrollTo(m_model->index(row, 0));
}

Nodes::NodeLink NuisanceList::selected() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    const Nodes::AlarmCount *alarm = rows.isEmpty() ? nullptr : m_model->alarmAt(rows[0].row());
    return alarm ? alarm->alarm : Nodes::NodeLink();
}

void NuisanceList::onSelected()
{
    const Nodes::NodeLink alarm = selected();
    m_jump->setEnabled(!alarm.isEmpty() && m_canJump && m_canJump(alarm));
    m_try->setEnabled(!alarm.isEmpty() && m_canTry && m_canTry(alarm));
}

} // namespace Widgets
