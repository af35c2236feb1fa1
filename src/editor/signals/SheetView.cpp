#include "editor/signals/SheetView.h"

#include "editor/signals/SheetDelegate.h"

#include <QHeaderView>
#include <QScrollBar>

namespace Editor {

namespace {

class FrozenColumn : public QTableView
{
public:
    using QTableView::edit;
    using QTableView::QTableView;
};

} // namespace

SheetView::SheetView(QWidget *parent) : QTableView(parent), m_frozen(new FrozenColumn(this))
{
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setItemDelegate(new SheetDelegate(this));
    m_frozen->setObjectName(QStringLiteral("frozen"));
    m_frozen->setItemDelegate(itemDelegate());
    m_frozen->setFrameShape(NoFrame);
    m_frozen->setFocusProxy(this);
    m_frozen->setContextMenuPolicy(Qt::NoContextMenu); // that of the table comes up
    m_frozen->setVerticalScrollMode(ScrollPerPixel);
    m_frozen->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_frozen->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_frozen->setWordWrap(false);
    m_frozen->verticalHeader()->hide();
    m_frozen->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_frozen->horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setFirstSectionMovable(false);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, m_frozen->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(m_frozen->verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(),
            &QScrollBar::setValue);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { place(); });
    connect(m_frozen->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int, int width) {
                if (column == 0)
                    setColumnWidth(0, width);
            });
}

SheetView::~SheetView() = default;

void SheetView::setModel(QAbstractItemModel *model)
{
    QTableView::setModel(model);
    m_frozen->setModel(model);
    m_frozen->setSelectionModel(selectionModel());
    connect(model, &QAbstractItemModel::modelReset, this, &SheetView::place);
    place();
}

// What the base class takes for visible may lie below the column that stays.
void SheetView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    const int kept = horizontalScrollBar()->value();
    QTableView::scrollTo(index, hint);
    if (index.column() == 0)
        horizontalScrollBar()->setValue(kept); // it is in sight
    const int hidden = columnWidth(0) - visualRect(index).left();
    if (index.column() > 0 && hidden > 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - hidden);
}

bool SheetView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    if (index.column() != 0)
        return QTableView::edit(index, trigger, event);
    m_frozen->setEditTriggers(editTriggers());
    return static_cast<FrozenColumn *>(m_frozen)->edit(index, trigger, event);
}

void SheetView::updateGeometries()
{
    QTableView::updateGeometries();
    place();
}

void SheetView::place()
{
    if (!model())
        return;
    m_frozen->verticalHeader()->setDefaultSectionSize(verticalHeader()->defaultSectionSize());
    m_frozen->setTextElideMode(textElideMode());
    m_frozen->horizontalHeader()->setFixedHeight(horizontalHeader()->height());
    for (int column = 1; column < model()->columnCount(); ++column)
        m_frozen->setColumnHidden(column, true);
    m_frozen->setColumnWidth(0, columnWidth(0));
    m_frozen->setGeometry(verticalHeader()->width() + frameWidth(), frameWidth(), columnWidth(0),
                          viewport()->height() + horizontalHeader()->height());
    m_frozen->verticalScrollBar()->setValue(verticalScrollBar()->value());
    m_frozen->raise();
}

} // namespace Editor
