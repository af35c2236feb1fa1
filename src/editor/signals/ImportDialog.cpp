#include "editor/signals/ImportDialog.h"

#include "editor/signals/ImportPreview.h"
#include "editor/signals/SheetModel.h"
#include "editor/signals/TableText.h"

#include "nodes/model/KindInfo.h"
#include "nodes/project/signals/SheetImport.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

using Nodes::SheetPlan;

namespace {

constexpr int rowHeight = 24;
constexpr int mappingHeight = 30;
constexpr int fateWidth = 190;
constexpr int fieldWidth = 160;
constexpr std::pair<char, const char *> separators[] = {
    {'\t', "табуляция"}, {';', "точка с запятой ;"}, {',', "запятая ,"}};

QString toText(const std::string &text)
{
    return QString::fromStdString(text);
}

} // namespace

ImportDialog::ImportDialog(const SheetModel &model, const QByteArray &bytes, QWidget *parent)
    : QDialog(parent),
      m_model(model),
      m_bytes(bytes),
      m_encoding(new QComboBox(this)),
      m_separator(new QComboBox(this)),
      m_kind(new QComboBox(this)),
      m_hasHeader(new QCheckBox(tr("В первой строке — названия столбцов"), this)),
      m_shown(new QComboBox(this)),
      m_mapping(new QTableWidget(1, 0, this)),
      m_table(new QTableView(this)),
      m_preview(new ImportPreview(this)),
      m_summary(new QLabel(this)),
      m_trouble(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Импорт таблицы"));
    makeChoices();
    makeTables();
    arrange();
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_encoding->setCurrentIndex(TableText::guess(bytes));
    const char separator = Nodes::DelimitedText::RecogniseSeparator(
        TableText::decode(bytes, m_encoding->currentIndex()));
    m_separator->setCurrentIndex(m_separator->findData(int(separator)));
    read();
    guessHeader();
    fillMapping();
    for (QComboBox *how : {m_encoding, m_separator}) {
        connect(how, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
            read();
            fillMapping();
        });
    }
    connect(m_hasHeader, &QCheckBox::toggled, this, &ImportDialog::fillMapping);
    connect(m_kind, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ImportDialog::plan);
    connect(m_shown, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this](int shown) {
        m_preview->setShown(ImportPreview::Shown(shown));
        tellRow();
    });
}

ImportDialog::~ImportDialog()
{
    m_plan.Discard();
}

SheetPlan ImportDialog::takePlan()
{
    return std::exchange(m_plan, SheetPlan());
}

void ImportDialog::makeChoices()
{
    m_encoding->setObjectName(QStringLiteral("encoding"));
    m_separator->setObjectName(QStringLiteral("separator"));
    m_kind->setObjectName(QStringLiteral("kind"));
    m_shown->setObjectName(QStringLiteral("shown"));
    m_summary->setObjectName(QStringLiteral("summary"));
    m_trouble->setObjectName(QStringLiteral("trouble"));
    for (const TableText::Encoding &encoding : TableText::encodings())
        m_encoding->addItem(QString::fromUtf8(encoding.title));
    for (const auto &[separator, title] : separators)
        m_separator->addItem(QString::fromUtf8(title), int(separator));
    for (const Nodes::KindInfo *kind : m_model.kinds())
        m_kind->addItem(toText(kind->nameRu));
    m_shown->addItems({tr("все строки"), tr("новые и изменяемые"), tr("с непринятым")});
    m_summary->setWordWrap(true);
    m_trouble->setWordWrap(true);
    m_trouble->setTextFormat(Qt::PlainText);
    m_trouble->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Импортировать"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Отмена"));
}

// Two views with the columns in common: what fields mean stays in sight while the rows scroll.
void ImportDialog::makeTables()
{
    m_mapping->setObjectName(QStringLiteral("mapping"));
    m_mapping->verticalHeader()->hide();
    m_mapping->verticalHeader()->setDefaultSectionSize(mappingHeight);
    m_mapping->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_mapping->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_mapping->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_mapping->setSelectionMode(QAbstractItemView::NoSelection);
    m_mapping->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_mapping->horizontalHeader()->setDefaultSectionSize(fieldWidth);
    m_table->setObjectName(QStringLiteral("preview"));
    m_table->setModel(m_preview);
    m_table->horizontalHeader()->hide();
    m_table->horizontalHeader()->setDefaultSectionSize(fieldWidth);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_table->setWordWrap(false);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(m_table->horizontalScrollBar(), &QScrollBar::valueChanged,
            m_mapping->horizontalScrollBar(), &QScrollBar::setValue);
    connect(m_mapping->horizontalScrollBar(), &QScrollBar::valueChanged,
            m_table->horizontalScrollBar(), &QScrollBar::setValue);
    connect(m_mapping->horizontalHeader(), &QHeaderView::sectionResized, m_table,
            [this](int column, int, int width) { m_table->setColumnWidth(column, width); });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ImportDialog::tellRow);
}

void ImportDialog::arrange()
{
    auto *how = new QHBoxLayout;
    const auto add = [&](const QString &title, QWidget *field) {
        how->addWidget(new QLabel(title, this));
        how->addWidget(field);
        how->addSpacing(8);
    };
    add(tr("Кодировка"), m_encoding);
    add(tr("Разделитель"), m_separator);
    add(tr("Новые — вида"), m_kind);
    how->addStretch();
    auto *rows = new QHBoxLayout;
    rows->addWidget(m_hasHeader);
    rows->addStretch();
    rows->addWidget(new QLabel(tr("Показать"), this));
    rows->addWidget(m_shown);
    auto *tables = new QVBoxLayout;
    tables->setSpacing(0);
    auto *above = new QHBoxLayout; // the views are equally wide without the scroll bar
    above->setSpacing(0);
    above->addWidget(m_mapping, 1);
    above->addSpacing(m_table->verticalScrollBar()->sizeHint().width());
    tables->addLayout(above);
    tables->addWidget(m_table, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(how);
    layout->addLayout(rows);
    layout->addLayout(tables, 1);
    layout->addWidget(m_trouble);
    layout->addWidget(m_summary);
    layout->addWidget(m_buttons);
    resize(1080, 620);
}

void ImportDialog::read()
{
    const std::string text = TableText::decode(m_bytes, m_encoding->currentIndex());
    const Nodes::Result result =
        Nodes::DelimitedText::Read(text, char(m_separator->currentData().toInt()), m_text);
    m_trouble->setText(result ? QString()
                              : tr("✗ Таблица не прочитана: %1.").arg(toText(result.GetDetail())));
}

void ImportDialog::guessHeader()
{
    const auto knows = [this](const std::string &title) {
        return m_model.columns().Guess(title) >= 0;
    };
    // A file that a person chose to import rather has a header than not.
    m_hasHeader->setChecked(!m_text.empty() &&
                            (m_model.columns().IsHeader(m_text[0]) ||
                             std::count_if(m_text[0].begin(), m_text[0].end(), knows) > 1));
}

void ImportDialog::fillMapping()
{
    std::size_t width = 0;
    for (const auto &row : m_text)
        width = std::max(width, row.size());
    const bool hasHeader = m_hasHeader->isChecked() && !m_text.empty();
    QStringList titles{tr("Строка: что будет")};
    QStringList choices{tr("— не читать —")};
    for (std::size_t i = 0; i < m_model.columns().GetCount(); ++i)
        choices << toText(m_model.columns()[i].title);
    std::vector<int> taken;
    m_mapping->setColumnCount(0); // with the boxes of before
    m_mapping->setColumnCount(int(width) + 1);
    m_mapping->setColumnWidth(0, fateWidth);
    auto *what = new QLabel(tr("Куда в таблице:"), m_mapping);
    what->setMargin(4);
    m_mapping->setCellWidget(0, 0, what);
    for (std::size_t i = 0; i < width; ++i) {
        const std::string title = hasHeader && i < m_text[0].size() ? m_text[0][i] : std::string();
        titles << (title.empty() ? tr("Столбец %1").arg(i + 1) : toText(title));
        int place = hasHeader ? m_model.columns().Guess(title) : (i == 0 ? 0 : -1);
        if (std::find(taken.begin(), taken.end(), place) != taken.end())
            place = -1;
        taken.push_back(place);
        auto *box = new QComboBox(m_mapping);
        box->addItems(choices);
        box->setCurrentIndex(place + 1);
        box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &ImportDialog::plan);
        m_mapping->setCellWidget(0, int(i) + 1, box);
    }
    m_mapping->setHorizontalHeaderLabels(titles);
    m_mapping->setFixedHeight(m_mapping->horizontalHeader()->sizeHint().height() + mappingHeight +
                              2 * m_mapping->frameWidth());
    plan();
    for (int column = 0; column < m_mapping->columnCount(); ++column)
        m_table->setColumnWidth(column, m_mapping->columnWidth(column));
}

std::vector<int> ImportDialog::places() const
{
    std::vector<int> chosen;
    for (int column = 1; column < m_mapping->columnCount(); ++column) {
        const auto *box = qobject_cast<const QComboBox *>(m_mapping->cellWidget(0, column));
        chosen.push_back(box ? box->currentIndex() - 1 : -1);
    }
    return chosen;
}

void ImportDialog::plan()
{
    if (!m_model.scope())
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_plan.Discard();
    std::vector<const Nodes::KindInfo *> kinds = m_model.kinds();
    if (m_kind->currentIndex() > 0)
        std::rotate(kinds.begin(), kinds.begin() + m_kind->currentIndex(),
                    kinds.begin() + m_kind->currentIndex() + 1);
    const std::vector<int> chosen = places();
    const std::size_t first = m_hasHeader->isChecked() ? 1 : 0;
    const Nodes::Result planned =
        Nodes::SheetImport(*m_model.scope(), m_model.family(), m_model.columns(), kinds)
            .PlanRows(m_text, first, chosen, m_plan);
    std::vector<std::string> titles;
    for (const int place : chosen)
        titles.push_back(place < 0 ? "" : m_model.columns()[std::size_t(place)].title);
    m_preview->show(m_text, first, m_plan, titles);
    QApplication::restoreOverrideCursor();
    tellSummary(planned);
    tellRow();
}

void ImportDialog::tellSummary(const Nodes::Result &planned)
{
    const auto count = [this](SheetPlan::Fate fate) {
        return int(std::count(m_plan.fates.begin(), m_plan.fates.end(), fate));
    };
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(planned && !m_plan.isEmpty());
    if (!planned)
        return m_summary->setText(
            tr("✗ Импортировать нельзя: %1.").arg(toText(planned.GetDetail())));
    QString text = tr("Новых: %1, изменится: %2, уже так: %3.")
                       .arg(count(SheetPlan::Added))
                       .arg(count(SheetPlan::Changed))
                       .arg(count(SheetPlan::Same));
    if (!m_plan.refusals.empty())
        text += tr(" ✗ Не принято строк: %1, всего замечаний: %2.")
                    .arg(count(SheetPlan::Refused))
                    .arg(m_plan.refusals.size());
    if (m_plan.isEmpty())
        text += tr(" Менять нечего.");
    m_summary->setText(text);
}

void ImportDialog::tellRow()
{
    if (m_text.empty())
        return; // why is told there
    const QModelIndex current = m_table->currentIndex();
    const QString trouble = m_preview->troubleOf(current.row());
    m_trouble->setText(trouble.isEmpty() ? QString() : QStringLiteral("✗ ") + trouble);
}

} // namespace Editor
