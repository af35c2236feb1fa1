#include "editor/properties/texts/TrialPanel.h"

#include <QDateTime>
#include <QHeaderView>
#include <QLabel>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace Editor {

namespace {

enum enColumn { ColumnName, ColumnMeaning, ColumnValue, ColumnCount };
constexpr int rowHeight = 24;
constexpr int tableHeight = 132;
constexpr std::size_t mostSteps = 5;

bool isSame(const std::vector<Nodes::TrialInput> &left, const std::vector<Nodes::TrialInput> &right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const auto &l, const auto &r) { return l.name == r.name; });
}

QString valueOf(const QString &written, Nodes::enSignalValueType type)
{
    if (type == Nodes::enSignalValueType::String)
        return written;
    const QString value = written.trimmed().toLower();
    if (type == Nodes::enSignalValueType::Bool && value == QStringLiteral("да"))
        return QStringLiteral("true");
    if (type == Nodes::enSignalValueType::Bool && value == QStringLiteral("нет"))
        return QStringLiteral("false");
    return QString(value).replace(QLatin1Char(','), QLatin1Char('.'));
}

QTableWidgetItem *fixedItem(const std::string &text)
{
    auto *item = new QTableWidgetItem(QString::fromStdString(text));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setToolTip(item->text());
    return item;
}

} // namespace

TrialPanel::TrialPanel(const Nodes::TextLanguage &language, const Nodes::NodeLink &node,
                       QWidget *parent)
    : QWidget(parent),
      m_language(language),
      m_node(node),
      m_table(new QTableWidget(0, ColumnCount, this)),
      m_outcome(new QLabel(this))
{
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Имя"), QStringLiteral("Что это"), QStringLiteral("Значение для пробы")});
    m_table->horizontalHeader()->setSectionResizeMode(ColumnMeaning, QHeaderView::Stretch);
    m_table->horizontalHeader()->resizeSection(ColumnValue, 150);
    m_table->horizontalHeader()->resizeSection(ColumnName, 90);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_table->setMaximumHeight(tableHeight);
    m_table->setTabKeyNavigation(false);
    m_table->setEditTriggers(QAbstractItemView::AllEditTriggers);
    m_table->setAccessibleName(QStringLiteral("Значения для пробы"));
    m_table->setVisible(language.inputs != nullptr);
    m_outcome->setTextFormat(Qt::PlainText);
    m_outcome->setWordWrap(true);
    m_outcome->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table);
    layout->addWidget(m_outcome);
    connect(m_table, &QTableWidget::cellChanged, this, [this](int row, int) {
        Nodes::TrialInput &input = m_inputs[std::size_t(row)];
        const QString value = m_table->item(row, ColumnValue)->text();
        input.value = valueOf(value, input.type).toStdString();
        m_given.insert(QString::fromStdString(input.name), QString::fromStdString(input.value));
        run();
    });
}

TrialPanel::~TrialPanel() = default;

QString TrialPanel::outcome() const
{
    return m_outcome->text();
}

void TrialPanel::setText(const QString &text, bool hasError)
{
    m_text = text.toStdString();
    m_hasError = hasError;
    // While the text cannot be read, nobody knows its names: those of before stay.
    if (m_language.inputs && !hasError)
        showInputs(m_language.inputs(m_text, m_node.GetNode()));
    run();
}

void TrialPanel::showInputs(const std::vector<Nodes::TrialInput> &inputs)
{
    if (isSame(inputs, m_inputs))
        return;
    const QSignalBlocker block(m_table);
    m_inputs = inputs;
    m_table->setRowCount(int(inputs.size()));
    for (int row = 0; row < int(inputs.size()); ++row) {
        Nodes::TrialInput &input = m_inputs[std::size_t(row)];
        const auto given = m_given.constFind(QString::fromStdString(input.name));
        if (given != m_given.constEnd())
            input.value = given->toStdString();
        m_table->setItem(row, ColumnName, fixedItem(input.name));
        m_table->setItem(row, ColumnMeaning, fixedItem(input.meaning));
        m_table->setItem(row, ColumnValue,
                         new QTableWidgetItem(QString::fromStdString(input.value)));
    }
    m_table->setVisible(!inputs.empty());
}

void TrialPanel::run()
{
    using Nodes::TextLanguage;
    if (m_language.form == TextLanguage::TimeFormat) {
        const QString now = QDateTime::currentDateTime().toString(QString::fromStdString(m_text));
        return m_outcome->setText(
            QStringLiteral("Проба: %1").arg(QString(now).replace(QLatin1String("\\n"), "\n")));
    }
    if (!m_language.run || m_hasError)
        return m_outcome->setText(m_language.run ? QStringLiteral("Проба: сначала исправьте текст")
                                                 : QString());
    const Nodes::TrialOutcome outcome = m_language.run(m_text, m_node.GetNode(), m_inputs);
    QStringList lines{
        (outcome.isDone ? QStringLiteral("Проба: ") : QStringLiteral("Проба не удалась: ")) +
        QString::fromStdString(outcome.text)};
    const std::size_t count = outcome.steps.size();
    for (std::size_t i = 0; i < std::min(count, mostSteps); ++i)
        lines << QStringLiteral("  • ") + QString::fromStdString(outcome.steps[i]);
    if (count > mostSteps)
        lines << QStringLiteral("  и ещё %1").arg(count - mostSteps);
    m_outcome->setText(lines.join(QLatin1Char('\n')));
}

} // namespace Editor
