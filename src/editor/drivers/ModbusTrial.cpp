#include "editor/drivers/ModbusTrial.h"

#include "editor/project/ProjectSession.h"
#include "editor/signals/SheetPage.h"
#include "editor/workspace/Workspace.h"

#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/signals/CellText.h"
#include "nodes/system/systemCore.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace Editor {

using Nodes::modbusDriver;
using Nodes::modbusSignal;

namespace {

constexpr int period = 1000;           // ms
constexpr std::size_t mostRead = 2000; // signals
constexpr int mostCauses = 3;          // told in words
enum Column { Name, Address, Type, Registers, Raw, Value, Time, Answer, ColumnCount };

QString toText(const std::string &text)
{
    return QString::fromStdString(text);
}

std::string textOf(const Nodes::ConfigNode &node, unsigned valueId)
{
    const Nodes::PropertyDescriptor *d = node.GetKind()->FindProperty(valueId);
    return d->binding.format(*d, node);
}

QString hexOf(const std::vector<std::uint16_t> &words)
{
    QStringList texts;
    for (const std::uint16_t word : words)
        texts << QStringLiteral("%1").arg(word, 4, 16, QLatin1Char('0')).toUpper();
    return texts.join(QLatin1Char(' '));
}

QString shown(const Nodes::SignalValue &value)
{
    if (value.GetType() == Nodes::enSignalValueType::Bool)
        return value.ToBool() ? QStringLiteral("да") : QStringLiteral("нет");
    return toText(value.ToString());
}

/// The text as the core expands it; as it is where a name in it is not known here.
QString expanded(const Nodes::systemCore &core, const std::string &text)
{
    std::string result;
    return toText(core.Expand(text, result) ? result : text);
}

} // namespace

ModbusTrial::ModbusTrial(Workspace &workspace, const Nodes::NodeLink &driver, SheetPage &page,
                         QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_driver(driver),
      m_page(page),
      m_host(new QLineEdit(this)),
      m_port(new QLineEdit(this)),
      m_button(new QPushButton(this)),
      m_repeats(new QCheckBox(tr("каждую секунду"), this)),
      m_status(new QLabel(this)),
      m_table(new QTableWidget(0, ColumnCount, this))
{
    m_host->setObjectName(QStringLiteral("host"));
    m_port->setObjectName(QStringLiteral("port"));
    m_button->setObjectName(QStringLiteral("start"));
    m_status->setObjectName(QStringLiteral("status"));
    m_table->setObjectName(QStringLiteral("readings"));
    m_port->setMaximumWidth(110);
    m_host->setMinimumWidth(140);
    m_repeats->setChecked(true);
    m_status->setWordWrap(true);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setText(tr("Читаются все сигналы устройства или выбранные на вкладке «Сигналы». "
                         "Запись не ведётся."));
    makeTable();
    auto *bar = new QHBoxLayout;
    bar->addWidget(new QLabel(tr("Адрес"), this));
    bar->addWidget(m_host, 1);
    bar->addWidget(new QLabel(tr("порт"), this));
    bar->addWidget(m_port);
    bar->addWidget(m_button);
    bar->addWidget(m_repeats);
    bar->addStretch(2);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_status);
    layout->addWidget(m_table, 1);
    connect(m_button, &QPushButton::clicked, this, [this] { m_isRunning ? stop() : start(); });
    connect(&workspace.session(), &ProjectSession::aboutToClose, this, &ModbusTrial::stop);
    if (Nodes::NodesCollection *project = driver.GetNodesCollection())
        m_connection = project->ConnectChanged([this](const Nodes::NodeChange &change) {
            if (change.node == m_driver)
                QMetaObject::invokeMethod(this, &ModbusTrial::fillPlace, Qt::QueuedConnection);
        });
    setRunning(false);
}

ModbusTrial::~ModbusTrial() = default;

void ModbusTrial::makeTable()
{
    m_table->setHorizontalHeaderLabels({tr("Сигнал"), tr("Адрес"), tr("Тип"), tr("Регистры"),
                                        tr("До масштаба"), tr("Значение"), tr("мс"), tr("Ответ")});
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(24);
    m_table->horizontalHeader()->setStretchLastSection(true);
    const int widths[] = {150, 56, 104, 82, 96, 84, 48};
    for (int column = 0; column < Answer; ++column)
        m_table->setColumnWidth(column, widths[column]);
}

void ModbusTrial::fillPlace()
{
    const Nodes::ConfigNode *driver = m_driver.GetNode();
    if (!driver || m_isRunning) // what is being read stays to be seen
        return;
    const Nodes::systemCore &core = m_workspace.session().core();
    const auto fill = [](QLineEdit &line, QString &filled, const QString &text) {
        if (text != filled)
            line.setText(text);
        filled = text;
    };
    fill(*m_host, m_filledHost, expanded(core, textOf(*driver, modbusDriver::Prop::Host)));
    fill(*m_port, m_filledPort, expanded(core, textOf(*driver, modbusDriver::Prop::Port)));
}

void ModbusTrial::setRunning(bool isRunning)
{
    m_isRunning = isRunning;
    m_button->setText(isRunning ? tr("Остановить") : tr("Проверить связь"));
    m_host->setEnabled(!isRunning);
    m_port->setEnabled(!isRunning);
    m_repeats->setEnabled(!isRunning);
    fillPlace();
}

void ModbusTrial::addRow(const Nodes::ConfigNode &signal)
{
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    for (int column = 0; column < ColumnCount; ++column)
        m_table->setItem(row, column, new QTableWidgetItem);
    m_table->item(row, Name)->setText(toText(signal.GetName()));
    m_table->item(row, Name)->setToolTip(toText(signal.GetPath()));
    m_table->item(row, Type)->setText(toText(Nodes::CellText::Show(
        *signal.GetKind()->FindProperty(modbusSignal::Prop::DataType.valueId), signal)));
}

bool ModbusTrial::gatherPoints()
{
    const Nodes::ConfigNode *driver = m_driver.GetNode();
    if (!driver)
        return false;
    const Nodes::NodeLinks chosen = m_page.selectedNodes();
    m_points.clear();
    m_rows.clear();
    m_unread = m_leftOut = 0;
    m_table->setRowCount(0);
    for (const Nodes::NodeLink &link : chosen.size() > 1 ? chosen : driver->GetNodes(true)) {
        const auto *signal = dynamic_cast<const modbusSignal *>(link.GetNode());
        if (!signal)
            continue;
        if (std::size_t(m_table->rowCount()) == mostRead) {
            ++m_leftOut;
            continue;
        }
        addRow(*signal);
        const int row = m_table->rowCount() - 1;
        const Nodes::modbusGroup *group = signal->GetGroup();
        if (!group) {
            ++m_unread;
            m_table->item(row, Value)->setText(QStringLiteral("----"));
            m_table->item(row, Answer)->setText(tr("вне группы опроса"));
            m_table->item(row, Answer)
                ->setToolTip(tr("Станция его не читает: перенесите в группу опроса."));
            continue;
        }
        m_rows.push_back(row);
        m_points.push_back({group->GetFirstAddress(), signal->GetPoint(*group)});
        m_table->item(row, Address)->setText(QString::number(m_points.back().GetAddress()));
    }
    return true;
}

bool ModbusTrial::readTarget(Nodes::ProbeTarget &target)
{
    const Nodes::ConfigNode *driver = m_driver.GetNode();
    if (!driver)
        return false;
    bool isNumber = false;
    const int port = m_port->text().trimmed().toInt(&isNumber);
    if (!isNumber || port < 1 || port > 65535) {
        m_status->setText(tr("Порт «%1» — не число от 1 до 65535. Впишите порт для проверки; в "
                             "проект он не запишется.")
                              .arg(m_port->text()));
        m_port->setFocus();
        return false;
    }
    target.host = m_host->text().trimmed().toStdString();
    target.port = std::to_string(port);
    target.unit = std::stoi(textOf(*driver, modbusDriver::Prop::Unit));
    target.timeout = std::stoi(textOf(*driver, modbusDriver::Prop::Timeout));
    return true;
}

void ModbusTrial::start()
{
    Nodes::ProbeTarget target;
    if (!readTarget(target) || !gatherPoints())
        return;
    setRunning(true);
    m_status->setText(tr("Соединение с %1:%2…").arg(m_host->text(), m_port->text()));
    const int trial = ++m_trial;
    m_probe.Start(std::move(target), m_points, m_repeats->isChecked() ? period : 0,
                  [this, trial](const Nodes::ProbeOutcome &outcome) {
                      QMetaObject::invokeMethod(
                          this, [this, outcome, trial] { take(outcome, trial); },
                          Qt::QueuedConnection);
                  });
}

void ModbusTrial::stop()
{
    if (!m_isRunning)
        return;
    ++m_trial;
    m_probe.Cancel();
    setRunning(false);
    m_status->setText(tr("Проверка остановлена; значения ниже — последние прочитанные."));
}

void ModbusTrial::showReading(int row, const Nodes::ProbeReading &reading)
{
    const bool isGood = bool(reading.result);
    const auto set = [this, row](int column, const QString &text) {
        m_table->item(row, column)->setText(text);
    };
    set(Registers, hexOf(reading.words));
    set(Raw, isGood ? shown(reading.raw) : QString());
    set(Value, isGood ? shown(reading.scaled) : QStringLiteral("----"));
    set(Time, reading.milliseconds > 0
                  ? QString::number(reading.milliseconds, 'f', reading.milliseconds < 100 ? 1 : 0)
                  : QString());
    const QString answer = toText(Nodes::ModbusProbe::Explain(reading.result));
    set(Answer, isGood ? tr("есть") : answer);
    m_table->item(row, Answer)->setToolTip(answer);
}

QString ModbusTrial::summary(const Nodes::ProbeOutcome &outcome) const
{
    int good = 0;
    int silent = 0;
    QMap<QString, int> causes;
    for (const Nodes::ProbeReading &reading : outcome.readings) {
        good += bool(reading.result);
        silent += reading.result == Nodes::Result::Timeout;
        if (!reading.result)
            ++causes[toText(Nodes::ModbusProbe::Explain(reading.result))];
    }
    const int all = int(outcome.readings.size());
    const bool isWhole = good == all && m_unread == 0 && m_leftOut == 0;
    if (!outcome.connection)
        return tr("✗ Связи нет: %1.").arg(toText(Nodes::ModbusProbe::Explain(outcome.connection)));
    QStringList lines;
    if (good == 0 && silent > 0)
        lines << tr("✗ Соединение есть, но устройство на запросы не отвечает.");
    else
        lines << tr("%1 Связь есть. Прочитано сигналов: %2 из %3, запросов: %4.")
                     .arg(isWhole ? QStringLiteral("✓") : QStringLiteral("⚠"))
                     .arg(good)
                     .arg(all)
                     .arg(outcome.requests);
    for (auto cause = causes.cbegin(); cause != causes.cend() && lines.size() <= mostCauses;
         ++cause)
        lines << tr("%1 — %2.").arg(cause.value()).arg(cause.key());
    if (m_unread > 0)
        lines << tr("Вне групп опроса: %1 — станция их не читает, перенесите в группы.")
                     .arg(m_unread);
    if (m_leftOut > 0)
        lines << tr("Не проверялось: %1 — за раз читается не более %2; выберите нужные на вкладке "
                    "«Сигналы».")
                     .arg(m_leftOut)
                     .arg(mostRead);
    return lines.join(QLatin1Char('\n'));
}

void ModbusTrial::take(const Nodes::ProbeOutcome &outcome, int trial)
{
    if (trial != m_trial)
        return;
    for (std::size_t i = 0; i < outcome.readings.size(); ++i)
        showReading(m_rows[i], outcome.readings[i]);
    m_status->setText(summary(outcome));
    if (!m_repeats->isChecked())
        setRunning(false);
}

} // namespace Editor
