#include "widgets/elements/health/WhatIfDialog.h"

#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/context/ProcessContext.h"
#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/elements/health/ChoiceButtons.h"
#include "widgets/elements/health/HealthTable.h"
#include "widgets/elements/health/HealthText.h"
#include "widgets/elements/health/TrialChart.h"
#include "widgets/elements/health/TrialForm.h"
#include "widgets/elements/health/TrialModel.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/alarms/trial/TuningProposals.h"
#include "nodes/archive/HistoryService.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <map>

namespace Widgets {

namespace {

constexpr QSize usualSize(1160, 680);
constexpr int tableRow = 36;

std::map<unsigned long, QPointer<WhatIfDialog>> &openDialogs()
{
    static std::map<unsigned long, QPointer<WhatIfDialog>> all;
    return all;
}

QString resultText(const Nodes::Result &result)
{
    if (result == Nodes::Result::AccessDenied)
        return QStringLiteral("Недостаточно прав");
    return QString::fromStdString(result.GetDetail().empty() ? result.ToString()
                                                             : result.GetDetail());
}

} // namespace

WhatIfDialog::WhatIfDialog(QWidget *parent)
    : BasicDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                              Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
      m_model(new TrialModel(this)),
      m_table(new QTableView(this)),
      m_chart(new TrialChart(this)),
      m_form(new TrialForm(this)),
      m_message(new QLabel(this)),
      m_periods(new ChoiceButtons({{7, QStringLiteral("Неделя")},
                                   {30, QStringLiteral("Месяц")},
                                   {92, QStringLiteral("3 месяца")}},
                                  this))
{
    setSizeGripEnabled(true);
    resize(usualSize);
    build();
    ApplyDialogLook(*this);
    connect(&m_asker, &TrialAsker::answered, this, &WhatIfDialog::take);
    connect(&m_asker, &TrialAsker::progressed, this,
            [this](int percent) { tell(QStringLiteral("Считается, %1 %").arg(percent)); });
    connect(m_form, &TrialForm::changed, this, [this](const Nodes::AlarmTuning &tuning) {
        m_model->setTuning(selectedRow(), tuning);
        m_chart->setVariants(m_model->variants());
        onSelected();
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const int row = selectedRow();
        if (row >= 0 && m_model->variants()[std::size_t(row)].tuning)
            m_form->setTuning(*m_model->variants()[std::size_t(row)].tuning);
        onSelected();
    });
}

void WhatIfDialog::open(const Nodes::NodeLink &alarm, const QWidget *near)
{
    QPointer<WhatIfDialog> &dialog = openDialogs()[alarm.GetNodeId()];
    if (!dialog) {
        DialogRequest request;
        request.parent = TouchMenu::windowOf(near);
        request.element = near;
        dialog = Dialogs::make<WhatIfDialog>(request);
        if (!dialog)
            return;
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setAlarm(alarm);
        dialog->show();
    }
    dialog->raise();
    dialog->activateWindow();
}

bool WhatIfDialog::canOpen(const Nodes::NodeLink &alarm)
{
    Nodes::systemCore *core = ProcessContext::model();
    const auto *node = dynamic_cast<const Nodes::BasicAlarm *>(alarm.GetNode());
    const Nodes::BasicSignal *signal = node ? node->GetSignal() : nullptr;
    return core && signal && core->GetSystemArchiver() && core->GetSystemAlarming() &&
           core->GetHistory().HasSource(signal->GetId());
}

void WhatIfDialog::build()
{
    m_table->setModel(m_model);
    PrepareHealthTable(*m_table, tableRow, TrialModel::Name);
    m_table->setMinimumHeight(7 * tableRow);
    MakeLegible(*m_message);
    m_message->setWordWrap(true);
    auto *periods = new QHBoxLayout;
    m_periods->choose(m_days);
    connect(m_periods, &ChoiceButtons::pressed, this, &WhatIfDialog::choosePeriod);
    periods->addWidget(m_periods);
    periods->addWidget(m_message, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(8);
    layout->addLayout(periods);
    layout->addWidget(m_table, 3);
    layout->addWidget(m_form);
    layout->addWidget(m_chart, 3);
    layout->addWidget(buildButtons());
}

QWidget *WhatIfDialog::buildButtons()
{
    auto *row = new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_compute = new QPushButton(QStringLiteral("Посчитать"), row);
    m_accept = new QPushButton(QStringLiteral("Принять…"), row);
    auto *close = new QPushButton(QStringLiteral("Закрыть"), row);
    for (QPushButton *button : {m_compute, m_accept, close}) {
        button->setAutoDefault(false);
        MakeTouchable(*button);
    }
    layout->addWidget(m_compute);
    layout->addStretch();
    layout->addWidget(m_accept);
    layout->addWidget(close);
    connect(m_compute, &QPushButton::clicked, this, &WhatIfDialog::onPressed);
    connect(m_accept, &QPushButton::clicked, this, &WhatIfDialog::ask);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    return row;
}

const Nodes::BasicAlarm *WhatIfDialog::node() const
{
    return dynamic_cast<const Nodes::BasicAlarm *>(m_alarm.GetNode());
}

QString WhatIfDialog::message() const
{
    return m_message->text();
}

void WhatIfDialog::setAlarm(const Nodes::NodeLink &alarm)
{
    m_alarm = alarm;
    const Nodes::BasicAlarm *node = this->node();
    const Nodes::BasicSignal *signal = node ? node->GetSignal() : nullptr;
    if (!signal)
        return tell(QStringLiteral("Тревоги больше нет в проекте"));
    setWindowTitle(QStringLiteral("Что если: ") + QString::fromStdString(node->GetText()));
    m_form->setSignal(signal->GetMinimum(), signal->GetMaximum(),
                      QString::fromStdString(signal->GetUnit()));
    propose();
    compute();
}

void WhatIfDialog::propose()
{
    const Nodes::systemCore *core = ProcessContext::model();
    const Nodes::systemAlarming *alarming = core ? core->GetSystemAlarming() : nullptr;
    const Nodes::BasicAlarm *alarm = node();
    if (!alarming || !alarm || !alarm->GetSignal())
        return;
    const double span = alarm->GetSignal()->GetMaximum() - alarm->GetSignal()->GetMinimum();
    std::vector<TrialVariant> variants{{QStringLiteral("Было (по журналу)"), {}, {}}};
    for (const Nodes::AlarmTuning &tuning :
         Nodes::ProposeTunings(alarming->GetTuning(m_alarm), span)) {
        const auto number = variants.size() - TrialModel::PresentRow;
        variants.push_back(
            {number == 0 ? QStringLiteral("Как сейчас") : QStringLiteral("Вариант %1").arg(number),
             tuning,
             {}});
    }
    m_model->setVariants(std::move(variants));
    select(TrialModel::FirstVariantRow);
}

void WhatIfDialog::choosePeriod(int days)
{
    m_days = days;
    m_periods->choose(days);
    compute();
}

void WhatIfDialog::compute()
{
    std::vector<Nodes::AlarmTuning> settings;
    for (const TrialVariant &variant : m_model->variants()) {
        if (variant.tuning)
            settings.push_back(*variant.tuning);
    }
    const Nodes::Result asked = m_asker.ask(m_alarm, m_days, settings);
    m_compute->setText(asked ? QStringLiteral("Отмена") : QStringLiteral("Посчитать"));
    tell(asked ? QStringLiteral("Считается…") : resultText(asked));
    onSelected();
}

void WhatIfDialog::take(const TrialAsker::AnswerPtr &answer)
{
    m_compute->setText(QStringLiteral("Посчитать"));
    if (answer->journalResult)
        m_model->setFigures(TrialModel::JournalRow, answer->journal);
    const auto &figures = answer->outcome.figures;
    for (std::size_t i = 0; i < figures.size(); ++i)
        m_model->setFigures(int(i) + TrialModel::PresentRow, figures[i]);
    m_chart->setVariants(m_model->variants());
    onSelected();
    if (!answer->result)
        return tell(QStringLiteral("Архив не прочитан: ") + resultText(answer->result));
    const Nodes::AlarmTrials::Outcome &outcome = answer->outcome;
    if (outcome.samples == 0)
        return tell(QStringLiteral("В архиве нет значений этого сигнала за период"));
    QString text = m_news + QStringLiteral("Значений в архиве: %1, с %2")
                                .arg(outcome.samples)
                                .arg(HealthText::time(outcome.first));
    if (!answer->journalResult)
        text += QStringLiteral(". Журнал не прочитан: ") + resultText(answer->journalResult);
    m_news.clear();
    tell(text);
}

void WhatIfDialog::onPressed()
{
    if (!m_asker.isBusy())
        return compute();
    m_asker.cancel();
    m_compute->setText(QStringLiteral("Посчитать"));
    tell(QStringLiteral("Расчёт отменён"));
}

void WhatIfDialog::select(int row)
{
    m_table->selectRow(row);
}

int WhatIfDialog::selectedRow() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows[0].row();
}

void WhatIfDialog::onSelected()
{
    const int row = selectedRow();
    m_form->setEnabled(row >= TrialModel::FirstVariantRow && !m_asker.isBusy());
    m_accept->setEnabled(!m_asker.isBusy() && m_model->isAcceptable(row));
    m_chart->setCurrent(row);
}

void WhatIfDialog::ask()
{
    DialogRequest request;
    request.parent = this;
    auto *box = Dialogs::make<PlainMessageBox>(request);
    if (!box)
        return;
    const QString name = node() ? QString::fromStdString(node()->GetText()) : QString();
    box->setQuestion(QStringLiteral("Что если"),
                     QStringLiteral("Изменить настройки тревоги «%1»? Они будут действовать "
                                    "сразу.\n\n%2")
                         .arg(name, m_model->changesText(selectedRow())),
                     QStringLiteral("Принять"));
    box->askFor([this] { accept(); });
}

void WhatIfDialog::accept()
{
    Nodes::systemCore *core = ProcessContext::model();
    Nodes::systemAlarming *alarming = core ? core->GetSystemAlarming() : nullptr;
    const int row = selectedRow();
    if (!alarming || !m_model->isAcceptable(row))
        return;
    const Nodes::AlarmTuning present = *m_model->variants()[TrialModel::PresentRow].tuning;
    const Nodes::AlarmTuning wanted =
        Nodes::ChangesOf(present, *m_model->variants()[std::size_t(row)].tuning);
    const Nodes::Result tuned = alarming->Tune(m_alarm, wanted);
    if (!tuned)
        return tell(QStringLiteral("Не принято: ") + resultText(tuned));
    m_news = QStringLiteral("Принято, настройки действуют. ");
    propose();
    compute();
}

void WhatIfDialog::tell(const QString &text)
{
    m_message->setText(text);
}

} // namespace Widgets
