#include "editor/signals/SheetPage.h"

#include "editor/signals/RefusalsDialog.h"
#include "editor/signals/SheetModel.h"
#include "editor/signals/SheetView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <set>

namespace Editor {

namespace {

constexpr int rowHeight = 24;
constexpr int measuredRows = 100; // that column widths are taken from, of all
constexpr int widestColumn = 260;
constexpr int widestName = 330;
constexpr int toldNodes = 1000; // more selected rows are nobody else's business

} // namespace

SheetPage::SheetPage(Workspace &workspace, const Nodes::NodeLink &scope, unsigned family,
                     QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_family(family),
      m_model(new SheetModel(workspace, scope, family, this)),
      m_table(new SheetView(this)),
      m_filter(new QLineEdit(this)),
      m_count(new QLabel(this))
{
    m_table->setObjectName(QStringLiteral("sheet"));
    m_table->setModel(m_model);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::AnyKeyPressed);
    m_table->setWordWrap(false);
    m_table->setTextElideMode(Qt::ElideMiddle); // the end of a path tells the most
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_table->horizontalHeader()->setSectionsMovable(true);
    m_table->horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
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
    connect(m_table->horizontalHeader(), &QHeaderView::customContextMenuRequested, this,
            &SheetPage::chooseColumns);
    connect(m_table->horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        if (!m_isFitting)
            m_sized.insert(m_model->columns()[std::size_t(column)].title);
    });
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
    const auto standard = [this, &bar](const char *icon, const QString &text, const QString &tip,
                                       const QKeySequence &keys, void (SheetPage::*run)()) {
        QAction *action = addAction(bar, text, text + QStringLiteral(". ") + tip, keys, run);
        action->setIcon(QIcon(QStringLiteral(":/editor/icons/%1.svg").arg(QLatin1String(icon))));
        return action;
    };
    addAction(bar, tr("Добавить…"), tr("Создать много узлов по образцу имени"),
              QKeySequence(Qt::CTRL + Qt::Key_N + Qt::ALT), &SheetPage::addByPattern);
    standard("delete", tr("Удалить"), tr("Узлы выбранных строк"),
             QKeySequence(Qt::CTRL + Qt::Key_Delete), &SheetPage::removeSelected);
    standard("copy", tr("Копировать"), tr("Выбранные ячейки — для электронной таблицы"),
             QKeySequence::Copy, &SheetPage::copy);
    QAction *paste =
        standard("paste", tr("Вставить"),
                 tr("Ячейки из электронной таблицы; со строкой заголовков — по именам"),
                 QKeySequence::Paste, &SheetPage::paste);
    QAction *mapped = addAction(
        bar, tr("Вставить как…"), tr("Таблица из буфера: куда какой столбец и что изменится"),
        QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_V), &SheetPage::pasteMapped);
    bar.removeAction(mapped); // beside the button instead
    if (auto *button = qobject_cast<QToolButton *>(bar.widgetForAction(paste))) {
        button->setPopupMode(QToolButton::MenuButtonPopup);
        button->setMenu(new QMenu(button));
        button->menu()->addAction(mapped);
    }
    bar.addSeparator();
    addAction(bar, tr("Импорт…"), tr("Таблица CSV: куда какой столбец и что изменится"), {},
              &SheetPage::importFile);
    addAction(bar, tr("Экспорт…"), tr("Таблица CSV"), {}, &SheetPage::exportFile);
    bar.addSeparator();
    addAction(bar, tr("Вниз"),
              tr("Заполнить вниз: значение верхней выбранной ячейки — во все ниже"),
              QKeySequence(Qt::CTRL + Qt::Key_D), &SheetPage::fillDown);
    addAction(bar, tr("Имена…"), tr("Имена выбранных строк по образцу"),
              QKeySequence(Qt::CTRL + Qt::Key_R), &SheetPage::renameByPattern);
    if (m_family == Nodes::NodeType::TypeSignal) {
        addAction(bar, tr("Тревоги…"), tr("Задать выбранным сигналам тревоги по пределам"), {},
                  &SheetPage::setAlarms);
        addAction(bar, tr("В архив"), tr("Отдать выбранные сигналы группе архива"), {},
                  &SheetPage::archiveSelected);
    }
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

// Anew when rows have come or gone; what somebody has dragged stays.
void SheetPage::fitColumns()
{
    if (m_fittedColumns == m_model->columnCount() && m_fittedRows == m_model->totalCount())
        return;
    m_fittedColumns = m_model->columnCount();
    m_fittedRows = m_model->totalCount();
    m_isFitting = true;
    const QFontMetrics metrics = m_table->fontMetrics();
    const int rows = m_model->rowCount();
    for (int column = 0; column < m_fittedColumns; ++column) {
        if (m_sized.count(m_model->columns()[std::size_t(column)].title) != 0)
            continue;
        int width = metrics.horizontalAdvance(
            m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        for (int row = 0; row < rows; row += std::max(1, rows / measuredRows))
            width = std::max(width, metrics.horizontalAdvance(m_model->text(row, column)));
        m_table->setColumnWidth(column,
                                std::min(width + 20, column == 0 ? widestName : widestColumn));
    }
    m_isFitting = false;
}

SheetEdits::Columns SheetPage::shownColumns() const
{
    const QHeaderView &header = *m_table->horizontalHeader();
    SheetEdits::Columns order;
    for (int place = 0; place < header.count(); ++place) {
        const int column = header.logicalIndex(place);
        if (!m_table->isColumnHidden(column))
            order.push_back(column);
    }
    return order;
}

void SheetPage::chooseColumns(const QPoint &at)
{
    QMenu menu;
    menu.addAction(tr("Показать все столбцы"), this, [this] {
        for (int column = 1; column < m_model->columnCount(); ++column)
            m_table->setColumnHidden(column, false);
    });
    menu.addSeparator();
    for (int column = 1; column < m_model->columnCount(); ++column) {
        QAction *shown =
            menu.addAction(m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        shown->setCheckable(true);
        shown->setChecked(!m_table->isColumnHidden(column));
        connect(shown, &QAction::toggled, this,
                [this, column](bool isOn) { m_table->setColumnHidden(column, !isOn); });
    }
    menu.exec(m_table->horizontalHeader()->mapToGlobal(at));
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
    for (const QModelIndex &index : m_table->selectionModel()->selectedIndexes()) {
        if (!m_table->isColumnHidden(index.column()))
            cells.emplace_back(index.row(), index.column());
    }
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
            QString::fromStdString(SheetEdits::copy(*m_model, cells, shownColumns())));
}

void SheetPage::paste()
{
    const QString text = QApplication::clipboard()->text();
    if (text.isEmpty())
        return m_workspace.tell(Workspace::Info, tr("В буфере обмена нет текста."));
    const QModelIndex at = m_table->currentIndex();
    if (m_model->scope())
        tell(SheetEdits::paste(m_workspace, *m_model, text.toStdString(), at.row(), at.column(),
                               selectedCells(), shownColumns()));
}

void SheetPage::fillDown()
{
    if (m_model->scope())
        tell(SheetEdits::fillDown(m_workspace, *m_model, selectedCells()));
}

} // namespace Editor
