#include "widgets/alarmlist/qwidgetAlarmList.h"

#include "widgets/context/ActionSink.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/events/filter/AlarmList.h"

#include "nodes/alarms/systemAlarming.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace Widgets {

namespace {

constexpr int gap = 8;

} // namespace

QPushButton *qwidgetAlarmList::addButton(QHBoxLayout &row, const QString &text)
{
    auto *button = new QPushButton(text, m_controls);
    QFont font = button->font();
    font.setPointSize(12);
    button->setFont(font);
    button->setFocusPolicy(Qt::NoFocus); // Return and Space acknowledge nothing by mistake
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance(text) + 32);
    row.addWidget(button);
    return button;
}

// What is acknowledged is chosen when the button goes down: what comes until it is let go stays.
void qwidgetAlarmList::buildButtons()
{
    auto *row = new QHBoxLayout(m_controls);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    m_all = addButton(*row, QStringLiteral("Квитировать показанные"));
    m_one = addButton(*row, QStringLiteral("Квитировать выбранный"));
    connect(m_all, &QPushButton::pressed, this,
            [this] { m_chosen = waiting(m_table->seenRevision()); });
    connect(m_one, &QPushButton::pressed, this,
            [this] { m_chosen = selected(m_table->seenRevision()); });
    for (QPushButton *button : {m_all, m_one})
        connect(button, &QPushButton::clicked, this,
                [this] { acknowledge(std::exchange(m_chosen, {})); });
    m_source = addButton(*row, QStringLiteral("К источнику"));
    connect(m_source, &QPushButton::clicked, this, &qwidgetAlarmList::goToSource);
    row->addStretch();
    m_count = new QLabel(m_controls);
    QFont font = m_count->font();
    font.setPointSize(12);
    m_count->setFont(font);
    row->addWidget(m_count);
}

Nodes::AlarmOccurrences qwidgetAlarmList::waiting(unsigned revision) const
{
    Nodes::AlarmOccurrences seen;
    for (int number = 0; number < m_model->rowCount(); ++number) {
        const AlarmRow &row = m_model->row(number);
        if (!row.isAcknowledged && row.waitsSince <= revision && m_list->shows(row))
            seen.push_back(row.occurrence());
    }
    return seen;
}

Nodes::AlarmOccurrences qwidgetAlarmList::selected(unsigned revision) const
{
    const QModelIndex index = m_table->selectedRow();
    if (!index.isValid() || m_model->row(index.row()).waitsSince > revision)
        return {};
    return {m_model->row(index.row()).occurrence()};
}

// The subsystem checks the rights and writes the journal; the rows follow what it tells.
void qwidgetAlarmList::acknowledge(const Nodes::AlarmOccurrences &seen)
{
    Nodes::systemAlarming *system = alarming();
    if (!system || seen.empty() || !isRuntime() || context().isPreview())
        return;
    for (const Nodes::Result &result : system->Acknowledge(seen)) {
        // Nothing to acknowledge: somebody else was faster, or it came anew and stays.
        if (result || result == Nodes::Result::NotFound || result == Nodes::Result::Refused)
            continue;
        const std::string why = result.GetResultTranslated();
        return context().actions().notify(QStringLiteral("Тревоги не квитированы: ") +
                                          QString::fromStdString(why));
    }
}

void qwidgetAlarmList::goToSource()
{
    const QModelIndex index = m_table->selectedRow();
    if (index.isValid())
        context().actions().jump(m_model->row(index.row()).event().sourceNode, this);
}

} // namespace Widgets
