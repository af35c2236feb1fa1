#include "editor/signals/SheetPage.h"

#include "editor/signals/RefusalsDialog.h"
#include "editor/signals/SheetDelegate.h"
#include "editor/signals/SheetModel.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>

#include <set>

namespace Editor {

namespace {

constexpr int rowHeight = 24;
constexpr int measuredRows = 50; // that column widths are taken from
constexpr int widestColumn = 260;
constexpr int toldNodes = 1000; // more selected rows are nobody else's business

} // namespace

SheetPage::SheetPage(Workspace &workspace, const Nodes::NodeLink &scope, unsigned family,
                     QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_family(family),
      m_model(new SheetModel(workspace, scope, family, this)),
      m_table(new QTableView(this)),
      m_filter(new QLineEdit(this)),
      m_count(new QLabel(this))
{
    m_table->setObjectName(QStringLiteral("sheet"));
    m_table->setModel(m_model);
    m_table->setItemDelegate(new SheetDelegate(m_table));
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::AnyKeyPressed);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->setWordWrap(false);
    m_table->setTextElideMode(Qt::ElideMiddle); // the end of a path tells the most
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_table->horizontalHeader()->setSectionsMovable(true);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_filter->setPlaceholderText(tr("Поиск по имени и описанию"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setMinimumWidth(180);
    auto *bar = new QToolBar(this);
    makeActions(*bar);
    auto *search = new QHBoxLayout;
    search->setContentsMargins(4, 0, 4, 4);
    search->addWidget(m_filter, 1);
    search->addWidget(m_count);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addLayout(search);
    layout->addWidget(m_table, 1);

    m_table->installEventFilter(this);
    connect(m_filter, &QLineEdit::textChanged, m_model, &SheetModel::setFilter);
    connect(m_model, &QAbstractItemModel::modelAboutToBeReset, this, &SheetPage::keepSelection);
    connect(m_model, &QAbstractItemModel::modelReset, this, &SheetPage::restoreSelection);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &SheetPage::tellSelection);
    fitColumns();
    showCount();
}

SheetPage::~SheetPage() = default;

QAction *SheetPage::addAction(QToolBar &bar, const QString &text, const QString &tip,
                              const QKeySequence &keys, void (SheetPage::*run)())
{
    QAction *action = bar.addAction(text);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setToolTip(keys.isEmpty() ? tip
                                      : tip + QStringLiteral(" (%1)").arg(
                                                  keys.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, this, run);
    QWidget::addAction(action);
    m_table->addAction(action);
    return action;
}

void SheetPage::makeActions(QToolBar &bar)
{
    addAction(bar, tr("Добавить…"), tr("Создать много узлов по образцу имени"),
              QKeySequence(Qt::CTRL + Qt::Key_N + Qt::ALT), &SheetPage::addByPattern);
    addAction(bar, tr("Импорт…"), tr("Таблица CSV: куда какой столбец и что изменится"), {},
              &SheetPage::importFile);
    addAction(bar, tr("Экспорт…"), tr("Таблица CSV"), {}, &SheetPage::exportFile);
    bar.addSeparator();
    addAction(bar, tr("Вставить"),
              tr("Ячейки из электронной таблицы; со строкой заголовков — по именам"),
              QKeySequence::Paste, &SheetPage::paste);
    addAction(bar, tr("Вставить как…"), tr("Таблица из буфера: куда какой столбец и что изменится"),
              QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_V), &SheetPage::pasteMapped);
    addAction(bar, tr("Вниз"),
              tr("Заполнить вниз: значение верхней выбранной ячейки — во все ниже"),
              QKeySequence(Qt::CTRL + Qt::Key_D), &SheetPage::fillDown);
    bar.addSeparator();
    if (m_family == Nodes::NodeType::TypeSignal) {
        addAction(bar, tr("Тревоги…"), tr("Задать выбранным сигналам тревоги по пределам"), {},
                  &SheetPage::setAlarms);
        addAction(bar, tr("В архив"), tr("Отдать выбранные сигналы группе архива"), {},
                  &SheetPage::archiveSelected);
    }
    addAction(bar, tr("Имена…"), tr("Имена выбранных строк по образцу"),
              QKeySequence(Qt::CTRL + Qt::Key_R), &SheetPage::renameByPattern);
    addAction(bar, tr("Копировать"), tr("Выбранные ячейки — для электронной таблицы"),
              QKeySequence::Copy, &SheetPage::copy);
    addAction(bar, tr("Удалить"), tr("Удалить узлы выбранных строк"),
              QKeySequence(Qt::CTRL + Qt::Key_Delete), &SheetPage::removeSelected);
}

// The keys of the table mean the table while it has the focus, whatever menus use them for.
bool SheetPage::eventFilter(QObject *watched, QEvent *event)
{
    const bool isAsked = event->type() == QEvent::ShortcutOverride;
    if (!isAsked && event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const QKeySequence pressed(int(key->modifiers()) | key->key());
    for (QAction *action : m_table->actions()) {
        if (action->shortcut().isEmpty() || action->shortcut() != pressed)
            continue;
        event->accept();
        if (!isAsked)
            action->trigger();
        return !isAsked;
    }
    if (isAsked && (key->key() == Qt::Key_F2 || key->key() == Qt::Key_Delete))
        event->accept();
    return QWidget::eventFilter(watched, event);
}

void SheetPage::fitColumns()
{
    if (m_fittedColumns == m_model->columnCount())
        return;
    m_fittedColumns = m_model->columnCount();
    const QFontMetrics metrics = m_table->fontMetrics();
    for (int column = 0; column < m_fittedColumns; ++column) {
        int width = metrics.horizontalAdvance(
            m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        for (int row = 0; row < std::min(measuredRows, m_model->rowCount()); ++row)
            width = std::max(width, metrics.horizontalAdvance(m_model->text(row, column)));
        m_table->setColumnWidth(column, std::min(width + 20, widestColumn));
    }
}

void SheetPage::showCount()
{
    const int shown = m_model->rowCount();
    m_count->setText(shown == m_model->totalCount()
                         ? tr(" Строк: %1").arg(shown)
                         : tr(" Строк: %1 из %2").arg(shown).arg(m_model->totalCount()));
}

SheetEdits::Cells SheetPage::selectedCells() const
{
    SheetEdits::Cells cells;
    for (const QModelIndex &index : m_table->selectionModel()->selectedIndexes())
        cells.emplace_back(index.row(), index.column());
    std::sort(cells.begin(), cells.end());
    return cells;
}

Nodes::NodeLinks SheetPage::selectedNodes() const
{
    std::set<int> rows;
    for (const auto &[row, column] : selectedCells())
        rows.insert(row);
    Nodes::NodeLinks nodes;
    for (const int row : rows)
        nodes.push_back(m_model->node(row));
    return nodes;
}

void SheetPage::keepSelection()
{
    m_kept = selectedNodes();
}

void SheetPage::restoreSelection()
{
    fitColumns();
    showCount();
    QItemSelection selection;
    for (const Nodes::NodeLink &node : m_kept) {
        const int row = m_model->rowOf(node);
        if (row >= 0)
            selection.select(m_model->index(row, 0),
                             m_model->index(row, m_model->columnCount() - 1));
    }
    m_table->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_kept.clear();
}

void SheetPage::tellSelection()
{
    if (!m_kept.empty())
        return; // comes back after a change of rows: whoever made it may have selected since
    const Nodes::NodeLinks nodes = selectedNodes();
    if (!nodes.empty() && nodes.size() <= toldNodes)
        m_workspace.selection().select(nodes, this);
}

bool SheetPage::reveal(const Nodes::NodeLink &node)
{
    int row = m_model->rowOf(node);
    if (row < 0 && !m_filter->text().isEmpty()) {
        m_filter->clear();
        row = m_model->rowOf(node);
    }
    if (row < 0)
        return false;
    m_table->selectRow(row);
    m_table->scrollTo(m_model->index(row, 0));
    return true;
}

void SheetPage::tell(const SheetEdits::Refusals &refusals)
{
    if (!refusals.empty())
        m_workspace.tell(Workspace::Warning,
                         tr("Не принято ячеек: %1, список в окне.").arg(refusals.size()));
    RefusalsDialog::tell(refusals, this);
}

void SheetPage::copy()
{
    const SheetEdits::Cells cells = selectedCells();
    if (!cells.empty())
        QApplication::clipboard()->setText(
            QString::fromStdString(SheetEdits::copy(*m_model, cells)));
}

void SheetPage::paste()
{
    const QString text = QApplication::clipboard()->text();
    if (text.isEmpty())
        return m_workspace.tell(Workspace::Info, tr("В буфере обмена нет текста."));
    const QModelIndex at = m_table->currentIndex();
    if (m_model->scope())
        tell(SheetEdits::paste(m_workspace, *m_model, text.toStdString(), at.row(), at.column(),
                               selectedCells()));
}

void SheetPage::fillDown()
{
    if (m_model->scope())
        tell(SheetEdits::fillDown(m_workspace, *m_model, selectedCells()));
}

} // namespace Editor
