#include "widgets/events/hidden/AlarmHiddenPane.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/eventlist/EventCellDelegate.h"
#include "widgets/events/details/AlarmCommands.h"
#include "widgets/events/hidden/ModelHidden.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScroller>
#include <QTableView>

#include <array>

namespace Widgets {

namespace {

constexpr int gap = 8;
constexpr int rowHeight = 40;
constexpr int leastHeight = 120;
// Pixels, by column; the reason takes what is left.
constexpr std::array<int, ModelHidden::ColumnCount> widths{250, 270, 110, 110, 200, 220};

} // namespace

AlarmHiddenPane::AlarmHiddenPane(ModelHidden &model, QWidget *parent)
    : QWidget(parent),
      m_model(model),
      m_table(new QTableView(this)),
      m_back(new QPushButton(QStringLiteral("Вернуть в список"), this)),
      m_obstacle(new QLabel(this))
{
    m_sorting.setSortRole(ModelHidden::SortRole);
    m_sorting.setSourceModel(&model);
    buildTable();
    m_back->setObjectName(QStringLiteral("back"));
    m_back->setFocusPolicy(Qt::NoFocus);
    MakeTouchable(*m_back);
    m_obstacle->setObjectName(QStringLiteral("obstacle"));
    m_obstacle->setTextFormat(Qt::PlainText);
    m_obstacle->setWordWrap(true);
    MakeLegible(*m_obstacle);
    auto *row = new QHBoxLayout;
    row->setSpacing(gap);
    row->addWidget(m_back);
    row->addWidget(m_obstacle, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addWidget(m_table, 1);
    column->addLayout(row);
    connect(m_back, &QPushButton::clicked, this, [this] {
        if (selectedRow() >= 0)
            emit backWanted(Nodes::BasicEvent(m_model.event(selectedRow())));
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &AlarmHiddenPane::follow);
    // Each second, too: rights may have changed.
    connect(&m_sorting, &QAbstractItemModel::dataChanged, this, &AlarmHiddenPane::follow);
    connect(&m_sorting, &QAbstractItemModel::modelReset, this, &AlarmHiddenPane::follow);
    connect(&m_sorting, &QAbstractItemModel::rowsInserted, this, &AlarmHiddenPane::follow);
    connect(&m_sorting, &QAbstractItemModel::rowsRemoved, this, &AlarmHiddenPane::follow);
    follow();
}

void AlarmHiddenPane::buildTable()
{
    m_table->setModel(&m_sorting);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->setWordWrap(false);
    m_table->setMinimumHeight(leastHeight);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_table->setIconSize({28, 28});
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->horizontalHeader()->setMinimumHeight(rowHeight);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(ModelHidden::Until, Qt::AscendingOrder);
    m_table->setStyleSheet(QStringLiteral("QScrollBar:vertical { width: 28px; }"
                                          "QScrollBar:horizontal { height: 28px; }"));
    MakeLegible(*m_table);
    MakeLegible(*m_table->horizontalHeader());
    for (int column = 0; column < ModelHidden::ColumnCount; ++column)
        m_table->setColumnWidth(column, widths[std::size_t(column)]);
    m_table->horizontalHeader()->setMinimumSectionSize(80);
    m_table->horizontalHeader()->setSectionResizeMode(ModelHidden::Reason, QHeaderView::Stretch);
    m_table->setItemDelegate(new EventCellDelegate(Qt::ElideRight, m_table));
    QScroller::grabGesture(m_table->viewport(), QScroller::TouchGesture);
}

int AlarmHiddenPane::selectedRow() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : m_sorting.mapToSource(rows.first()).row();
}

void AlarmHiddenPane::follow()
{
    const int row = selectedRow();
    const QString obstacle =
        m_model.rowCount() == 0 ? QStringLiteral("Отложенных и подавленных тревог нет")
        : row < 0 ? QStringLiteral("Выберите тревогу")
                  : AlarmCommands::obstacle(AlarmCommands::TakeBack, m_model.event(row));
    m_back->setEnabled(row >= 0 && obstacle.isEmpty());
    QStringList lines; // a panel has no tool tips: what the cells cut off is told here
    if (row >= 0) {
        const auto cell = [&](int column) { return m_model.index(row, column).data().toString(); };
        lines << (ModelHidden::isByDesign(m_model.event(row))
                      ? QStringLiteral("%1: %2").arg(cell(ModelHidden::Text),
                                                     cell(ModelHidden::Reason))
                      : QStringLiteral("%1. %2: %3")
                            .arg(cell(ModelHidden::Text), cell(ModelHidden::Who),
                                 cell(ModelHidden::Reason)));
    }
    if (!obstacle.isEmpty())
        lines << obstacle;
    m_obstacle->setText(lines.join('\n'));
}

} // namespace Widgets
