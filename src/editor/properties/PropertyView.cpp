#include "editor/properties/PropertyView.h"

#include "editor/properties/PropertyDelegate.h"
#include "editor/properties/PropertyFilter.h"
#include "editor/properties/PropertyModel.h"
#include "editor/properties/PropertyWindows.h"

#include "nodes/model/properties/PropertyDescriptor.h"
#include "utils/settings/Configurator.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QJsonObject>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace Editor {

namespace {

constexpr int resetWidth = 24;
constexpr double leastNameShare = 0.4;
constexpr double greatestNameShare = 0.62;
const QString nameShareKey = QStringLiteral("nameShare");

Utils::Configurator settings()
{
    return {QStringLiteral("ConfiguratorProperties"), QStringLiteral("configurator.json")};
}

bool isGroup(const QModelIndex &index)
{
    const PropertyRow *row = PropertyModel::row(index);
    return row && row->what == PropertyRow::Group;
}

// A font is one line until somebody wants its parts.
bool isOpenAtFirst(const QModelIndex &index)
{
    return isGroup(index);
}

} // namespace

PropertyView::PropertyView(const PropertyHost &host, QWidget *parent)
    : QTreeView(parent),
      m_host(host),
      m_model(new PropertyModel(host.push, this)),
      m_filter(new PropertyFilter(this)),
      m_delegate(
          new PropertyDelegate([this](const QModelIndex &index) { return contextOf(index); }, this))
{
    setAccessibleName(QStringLiteral("Свойства"));
    m_filter->setSourceModel(m_model);
    setModel(m_filter);
    setItemDelegate(m_delegate);
    setIndentation(9);
    setUniformRowHeights(true);
    setSelectionBehavior(SelectRows);
    setEditTriggers(EditKeyPressed);
    setDragDropMode(DropOnly);
    setDropIndicatorShown(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->setStretchLastSection(false);
    header()->setMinimumSectionSize(resetWidth);
    header()->setSectionResizeMode(PropertyModel::ColumnName, QHeaderView::Interactive);
    header()->setSectionResizeMode(PropertyModel::ColumnValue, QHeaderView::Stretch);
    header()->setSectionResizeMode(PropertyModel::ColumnReset, QHeaderView::Fixed);
    header()->resizeSection(PropertyModel::ColumnReset, resetWidth);
    QJsonObject kept;
    (void)settings().load(kept); // logged
    m_nameShare = kept.value(nameShareKey).toDouble();
    connectModel();
}

PropertyView::~PropertyView()
{
    QJsonObject kept;
    kept.insert(nameShareKey, m_nameShare);
    if (m_nameShare > 0)
        (void)settings().save(kept); // logged
}

void PropertyView::connectModel()
{
    connect(m_filter, &QAbstractItemModel::modelAboutToBeReset, this, &PropertyView::remember);
    connect(m_filter, &QAbstractItemModel::modelReset, this, &PropertyView::restore);
    connect(this, &QTreeView::clicked, this, &PropertyView::press);
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex &index) { noteOpen(index, true); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex &index) { noteOpen(index, false); });
    connect(header(), &QHeaderView::sectionResized, this, [this](int section, int, int width) {
        if (section == PropertyModel::ColumnName && !m_isFitting)
            m_nameShare = double(width) / std::max(shared(), 1);
    });
    connect(m_delegate, &PropertyDelegate::interactionBegun, m_model,
            &PropertyModel::beginInteraction);
    connect(m_delegate, &PropertyDelegate::interactionEnded, m_model,
            &PropertyModel::endInteraction);
    connect(m_delegate, &PropertyDelegate::interactionCancelled, m_model,
            &PropertyModel::cancelInteraction);
    connect(m_delegate, &PropertyDelegate::windowRequested, this, &PropertyView::openWindow);
}

int PropertyView::shared() const
{
    return viewport()->width() - resetWidth;
}

// Names and values share the width as the user has parted them; until then names are read whole, if
// they leave enough to the values.
void PropertyView::fitNames()
{
    const int wanted = m_nameShare > 0 ? int(m_nameShare * shared())
                                       : std::clamp(sizeHintForColumn(PropertyModel::ColumnName),
                                                    int(leastNameShare * shared()),
                                                    int(greatestNameShare * shared()));
    m_isFitting = true;
    header()->resizeSection(PropertyModel::ColumnName, wanted);
    m_isFitting = false;
}

void PropertyView::resizeEvent(QResizeEvent *event)
{
    fitNames();
    QTreeView::resizeEvent(event);
}

// A tree offers to move what is dragged, for itself: what a property refers to stays where it is.
void PropertyView::dragEnterEvent(QDragEnterEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    QTreeView::dragEnterEvent(event);
}

void PropertyView::dragMoveEvent(QDragMoveEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    QTreeView::dragMoveEvent(event);
    if (event->isAccepted())
        event->setDropAction(Qt::CopyAction);
}

void PropertyView::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    QTreeView::dropEvent(event);
    if (event->isAccepted())
        event->setDropAction(Qt::CopyAction);
}

void PropertyView::setNodes(const Nodes::NodeLinks &nodes)
{
    (void)m_delegate->commitOpen();
    m_model->setNodes(nodes);
}

void PropertyView::setReadOnly(const QString &reason)
{
    m_model->setReadOnly(reason);
}

void PropertyView::search(const QString &text)
{
    m_filter->search(text);
    restore();
}

QModelIndex PropertyView::find(const QString &key) const
{
    return m_filter->mapFromSource(m_model->find(key));
}

ValueContext PropertyView::contextOf(const QModelIndex &index) const
{
    const PropertyRow *row = PropertyModel::row(index);
    ValueContext context;
    context.descriptor = row ? row->descriptor : nullptr;
    context.node = m_model->nodes().empty() ? Nodes::NodeLink() : m_model->nodes()[0];
    context.project = m_model->project();
    context.reveal = m_host.reveal;
    return context;
}

void PropertyView::remember()
{
    const QString current = currentIndex().data(PropertyModel::KeyRole).toString();
    m_current = current.isEmpty() ? m_current : current;
    m_scroll = verticalScrollBar()->value();
}

void PropertyView::restore()
{
    m_isRestoring = true;
    const bool isSearching = !m_filter->text().isEmpty();
    for (int i = 0; i < m_filter->rowCount(); ++i) {
        const QModelIndex group = m_filter->index(i, 0);
        setFirstColumnSpanned(i, {}, true);
        setExpanded(group,
                    isSearching || m_isOpen.value(group.data(PropertyModel::KeyRole).toString(),
                                                  isOpenAtFirst(group)));
        for (int j = 0; j < m_filter->rowCount(group); ++j) {
            const QModelIndex row = m_filter->index(j, 0, group);
            setExpanded(row,
                        isSearching || m_isOpen.value(row.data(PropertyModel::KeyRole).toString(),
                                                      isOpenAtFirst(row)));
        }
    }
    const QModelIndex current = find(m_current);
    if (current.isValid())
        setCurrentIndex(current.sibling(current.row(), PropertyModel::ColumnValue));
    verticalScrollBar()->setValue(m_scroll);
    m_isRestoring = false;
    fitNames();
}

void PropertyView::noteOpen(const QModelIndex &index, bool isOpen)
{
    if (!m_isRestoring && m_filter->text().isEmpty())
        m_isOpen[index.data(PropertyModel::KeyRole).toString()] = isOpen;
}

void PropertyView::press(const QModelIndex &index)
{
    if (index.column() == PropertyModel::ColumnReset)
        resetCurrent();
    else if (index.column() == PropertyModel::ColumnValue)
        editRow(index);
}

bool PropertyView::resetCurrent()
{
    const QModelIndex source = m_filter->mapToSource(currentIndex());
    return source.isValid() &&
           m_model->reset(source.sibling(source.row(), PropertyModel::ColumnValue));
}

void PropertyView::editRow(const QModelIndex &index)
{
    const PropertyRow *row = PropertyModel::row(index);
    if (!row)
        return;
    if (PropertyWindows::has(*row))
        return openWindow(index);
    const QModelIndex cell = index.sibling(index.row(), PropertyModel::ColumnValue);
    if (cell.flags() & Qt::ItemIsEditable)
        edit(cell);
}

void PropertyView::openWindow(const QModelIndex &index)
{
    const PropertyRow *row = PropertyModel::row(index);
    if (row)
        PropertyWindows::open(*row, *m_model, m_host, *this);
}

void PropertyView::keyPressEvent(QKeyEvent *event)
{
    const QModelIndex cell =
        currentIndex().sibling(currentIndex().row(), PropertyModel::ColumnValue);
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Backspace && event->modifiers() == Qt::ControlModifier) {
        resetCurrent();
    } else if (isGroup(cell) && isEnter) {
        setExpanded(currentIndex(), !isExpanded(currentIndex()));
    } else if ((isEnter || event->key() == Qt::Key_Space) &&
               (cell.flags() & Qt::ItemIsUserCheckable)) {
        const bool isOn = cell.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        m_filter->setData(cell, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    } else if (isEnter) {
        editRow(cell);
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void PropertyView::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    if (isGroup(index))
        painter->fillRect(option.rect, option.palette.color(QPalette::Window));
    QTreeView::drawRow(painter, option, index);
    painter->setPen(option.palette.color(QPalette::Midlight));
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
}

} // namespace Editor
