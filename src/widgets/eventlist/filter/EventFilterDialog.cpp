#include "widgets/eventlist/filter/EventFilterDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/eventlist/filter/FilterModel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScroller>
#include <QSortFilterProxyModel>
#include <QTreeView>

namespace Widgets {

namespace {

constexpr int margin = 16;
constexpr int gap = 8;
constexpr QSize sizeAtFirst(560, 640);

constexpr const char *treeStyle =
    "QTreeView { font-size: 15px; } QTreeView::item { min-height: 36px; }"
    "QTreeView::indicator { width: 22px; height: 22px; }"
    "QScrollBar:vertical { width: 28px; }";

} // namespace

EventFilterDialog::EventFilterDialog(Nodes::widgetEventList *node, QWidget *parent)
    : BasicDialog(parent),
      m_model(new FilterModel(node, this)),
      m_found(new QSortFilterProxyModel(this)),
      m_tree(new QTreeView(this)),
      m_count(new QLabel(this))
{
    setWindowTitle(QStringLiteral("Фильтр"));
    resize(sizeAtFirst);
    m_found->setSourceModel(m_model);
    m_found->setRecursiveFilteringEnabled(true);
    m_found->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_tree->setModel(m_found);
    m_tree->setStyleSheet(QLatin1String(treeStyle));
    m_tree->setUniformRowHeights(true);
    m_tree->setIndentation(28);
    m_tree->expandToDepth(1);
    QScroller::grabGesture(m_tree->viewport(), QScroller::TouchGesture);
    auto *search = new QLineEdit(this);
    search->setPlaceholderText(QStringLiteral("Найти узел…"));
    search->setClearButtonEnabled(true);
    search->setMinimumHeight(TouchSize);
    MakeLegible(*search);
    MakeLegible(*m_count);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(gap);
    column->addWidget(search);
    column->addWidget(m_tree, 1);
    column->addWidget(m_count);
    buildKeys(column);
    connect(search, &QLineEdit::textChanged, this, &EventFilterDialog::find);
    m_counting.setSingleShot(true);
    connect(&m_counting, &QTimer::timeout, this, &EventFilterDialog::showCount);
    connect(m_model, &QAbstractItemModel::rowsRemoved, &m_counting, qOverload<>(&QTimer::start));
    connect(m_model, &QAbstractItemModel::dataChanged, &m_counting, qOverload<>(&QTimer::start));
    showCount();
}

void EventFilterDialog::buildKeys(QVBoxLayout *column)
{
    auto *none = new QPushButton(QStringLiteral("Снять все"), this);
    auto *ok = new QPushButton(QStringLiteral("Ок"), this);
    auto *cancel = new QPushButton(QStringLiteral("Отмена"), this);
    ok->setDefault(true);
    auto *keys = new QHBoxLayout;
    keys->setSpacing(gap);
    for (QPushButton *button : {none, ok, cancel}) {
        MakeTouchable(*button);
        button->setAutoDefault(button == ok);
    }
    keys->addWidget(none);
    keys->addStretch();
    keys->addWidget(ok);
    keys->addWidget(cancel);
    column->addLayout(keys);
    connect(none, &QPushButton::clicked, m_model, &FilterModel::uncheckAll);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

Nodes::NodesArray EventFilterDialog::sources() const
{
    return m_model->getNa();
}

void EventFilterDialog::showCount()
{
    const std::size_t count = m_model->getNa().size();
    m_count->setText(count == 0 ? QStringLiteral("Ничего не отмечено: события всех источников")
                                : QStringLiteral("Отмечено источников: %1").arg(count));
}

void EventFilterDialog::find(const QString &text)
{
    m_found->setFilterFixedString(text);
    if (!text.isEmpty())
        m_tree->expandAll();
}

} // namespace Widgets
