#include "editor/drivers/LocalTrial.h"

#include "editor/drivers/DriverCopy.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/drivers/BasicDriver.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/texts/LuaMessages.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace Editor {

using Nodes::BasicDriver;

namespace {

constexpr int period = 250;             // ms, of showing
constexpr int pause = 300;              // ms without a change before the copy is made anew
constexpr std::size_t mostShown = 2000; // signals
enum Column { Name, Value, Unit, State, ColumnCount };

QString toText(const std::string &text)
{
    return QString::fromStdString(text);
}

QString shown(const Nodes::SignalValue &value, int decimals)
{
    if (value.IsEmpty() || value.IsError())
        return QStringLiteral("----");
    if (value.GetType() == Nodes::enSignalValueType::Bool)
        return value.ToBool() ? QStringLiteral("да") : QStringLiteral("нет");
    return value.GetType() == Nodes::enSignalValueType::Double
               ? QLocale(QLocale::Russian).toString(value.ToDouble(), 'f', decimals)
               : toText(value.ToString());
}

QString stateOf(const Nodes::SignalValue &value)
{
    if (value.IsError()) {
        const Nodes::Result error = value.GetError();
        const Nodes::LuaMessage message = Nodes::LuaMessage::Of(error.GetDetail());
        const QString detail = toText(message.ToRussian());
        if (message.line > 0)
            return LocalTrial::tr("✗ формула, строка %1: %2").arg(message.line).arg(detail);
        return QStringLiteral("✗ ") + toText(error.GetResultTranslated()) +
               (detail.isEmpty() ? QString() : QStringLiteral(": ") + detail);
    }
    if (value.IsEmpty())
        return LocalTrial::tr("ещё не измерено");
    return value.IsGood() ? LocalTrial::tr("✓ достоверно") : LocalTrial::tr("✗ недостоверно");
}

bool isBelow(const Nodes::ConfigNode *node, const Nodes::ConfigNode *top)
{
    while (node && node != top)
        node = node->GetParent();
    return node != nullptr;
}

} // namespace

LocalTrial::LocalTrial(Workspace &workspace, const Nodes::NodeLink &driver, QWidget *parent)
    : QWidget(parent),
      m_driver(driver),
      m_button(new QPushButton(tr("Попробовать"), this)),
      m_status(new QLabel(this)),
      m_table(new QTableWidget(0, ColumnCount, this))
{
    m_button->setObjectName(QStringLiteral("start"));
    m_status->setObjectName(QStringLiteral("status"));
    m_status->setWordWrap(true);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setText(tr("Покажет, что драйвер даст своим сигналам с настройками, какие есть "
                         "сейчас. Станция для этого не нужна."));
    makeTable();
    auto *bar = new QHBoxLayout;
    bar->addWidget(m_button);
    bar->addWidget(m_status, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_table, 1);
    m_refresh.setInterval(period);
    m_restart.setInterval(pause);
    m_restart.setSingleShot(true);
    connect(&m_refresh, &QTimer::timeout, this, &LocalTrial::showValues);
    connect(&m_restart, &QTimer::timeout, this, &LocalTrial::restart);
    connect(m_button, &QPushButton::clicked, this, [this] { isRunning() ? stop() : start(); });
    connect(&workspace.session(), &ProjectSession::aboutToClose, this, &LocalTrial::stop);
    if (Nodes::NodesCollection *project = driver.GetNodesCollection())
        m_connection = project->ConnectChanged(
            [this](const Nodes::NodeChange &change) { follow(change.node); });
}

LocalTrial::~LocalTrial() = default;

void LocalTrial::makeTable()
{
    m_table->setObjectName(QStringLiteral("values"));
    m_table->setHorizontalHeaderLabels({tr("Сигнал"), tr("Значение"), tr("Ед."), tr("Состояние")});
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(24);
    m_table->horizontalHeader()->setStretchLastSection(true);
    const int widths[] = {220, 120, 60};
    for (int column = 0; column < State; ++column)
        m_table->setColumnWidth(column, widths[column]);
}

void LocalTrial::follow(const Nodes::NodeLink &changed)
{
    const Nodes::ConfigNode *driver = m_driver.GetNode();
    if (isRunning() && (!driver || isBelow(changed.GetNode(), driver)))
        m_restart.start();
}

void LocalTrial::start()
{
    const auto *driver = dynamic_cast<const BasicDriver *>(m_driver.GetNode());
    if (!driver)
        return;
    m_copy = std::make_unique<DriverCopy>(*driver);
    m_button->setText(tr("Остановить"));
    addRows();
    const std::size_t all = m_copy->signalNodes().size();
    if (!m_copy->result())
        m_status->setText(tr("✗ Не работает: %1.").arg(toText(m_copy->result().ToString())));
    else if (all == 0)
        m_status->setText(tr("У драйвера нет сигналов: добавьте их на вкладке «Сигналы»."));
    else if (all > mostShown)
        m_status->setText(
            tr("Работает. Показаны первые %1 из %2 сигналов.").arg(mostShown).arg(all));
    else
        m_status->setText(tr("Работает. Изменения настроек и сигналов подхватываются сразу."));
    m_refresh.start();
    showValues();
}

void LocalTrial::stop()
{
    if (!isRunning())
        return;
    m_refresh.stop();
    m_restart.stop();
    m_copy.reset();
    m_table->setRowCount(0); // what does not run must not look live
    m_button->setText(tr("Попробовать"));
    m_status->setText(tr("Проба остановлена."));
}

void LocalTrial::restart()
{
    if (!isRunning())
        return;
    if (!m_driver.isValid())
        return stop();
    m_copy.reset(); // before another works
    start();
}

void LocalTrial::addRows()
{
    const auto *driver = dynamic_cast<const BasicDriver *>(m_driver.GetNode());
    const std::string prefix = driver->GetPath() + "/";
    const auto &own = driver->GetSignals();
    m_table->setRowCount(int(std::min({m_copy->signalNodes().size(), own.size(), mostShown})));
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const Nodes::BasicSignal &signal = *own[std::size_t(row)];
        const std::string path = signal.GetPath();
        const QString texts[] = {
            toText(path.compare(0, prefix.size(), prefix) == 0 ? path.substr(prefix.size()) : path),
            QString(), toText(signal.GetUnit()), QString()};
        for (int column = 0; column < ColumnCount; ++column)
            m_table->setItem(row, column, new QTableWidgetItem(texts[column]));
        m_table->item(row, Value)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
}

void LocalTrial::showValues()
{
    for (int row = 0; m_copy && row < m_table->rowCount(); ++row) {
        const Nodes::BasicSignal &signal = *m_copy->signalNodes()[std::size_t(row)];
        const Nodes::SignalValue value = signal.GetValue();
        const QString state = stateOf(value);
        m_table->item(row, Value)->setText(shown(value, signal.GetDecimals()));
        m_table->item(row, Value)->setToolTip(toText(value.ToString()));
        m_table->item(row, State)->setText(state);
        m_table->item(row, State)->setToolTip(state);
    }
}

} // namespace Editor
