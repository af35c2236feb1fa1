#include "editor/picker/NodePicker.h"

#include "editor/properties/PropertyDrop.h"
#include "editor/workspace/KeyboardAccess.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/PropertyDescriptor.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

namespace {

constexpr int expandedAtOnce = 500;

} // namespace

NodePicker::NodePicker(const Nodes::NodesCollection *project,
                       const Nodes::PropertyDescriptor &descriptor, QWidget *parent)
    : NodePicker(
          project, QString::fromStdString(descriptor.nameRu),
          [&descriptor](const Nodes::ConfigNode &node) {
              return PropertyDrop::fits(descriptor, node);
          },
          parent)
{
    if (descriptor.binding.type == Nodes::PropertyType::Links)
        m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
}

NodePicker::NodePicker(const Nodes::NodesCollection *project, const QString &title,
                       const Test &isPickable, QWidget *parent)
    : QDialog(parent),
      m_project(project),
      m_token(project ? project->GetToken() : 0),
      m_model(new NodePickerModel(project, isPickable, this)),
      m_search(new QLineEdit(this)),
      m_view(new QTreeView(this)),
      m_found(new QLabel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    KeyboardAccess::makeSearchLine(*m_search, QStringLiteral("Поиск по имени, описанию или пути"));
    m_search->installEventFilter(this);
    m_view->setModel(m_model);
    m_view->setAccessibleName(QStringLiteral("Узлы"));
    m_view->setUniformRowHeights(true);
    m_view->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_view->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_view->header()->setStretchLastSection(false);
    m_found->setTextFormat(Qt::PlainText);
    m_found->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(this);
    m_take = buttons->addButton(QStringLiteral("Выбрать"), QDialogButtonBox::AcceptRole);
    m_take->setDefault(true);
    buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    for (QWidget *part : std::initializer_list<QWidget *>{m_search, m_view, m_found, buttons})
        layout->addWidget(part);
    connect(m_search, &QLineEdit::textChanged, this, &NodePicker::search);
    connect(m_view, &QTreeView::doubleClicked, this, &NodePicker::take);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &NodePicker::check);
    connect(buttons, &QDialogButtonBox::accepted, this, &NodePicker::take);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(560, 520);
    search(QString());
}

NodePicker::~NodePicker() = default;

void NodePicker::setCurrent(unsigned long id)
{
    const QModelIndex index = id == 0 ? QModelIndex() : m_model->find(id);
    if (!index.isValid())
        return;
    m_view->setCurrentIndex(index);
    m_view->scrollTo(index, QAbstractItemView::PositionAtCenter);
}

void NodePicker::search(const QString &text)
{
    m_model->search(text);
    if (m_model->count() <= expandedAtOnce)
        m_view->expandAll();
    else
        m_view->expandToDepth(1);
    if (!text.isEmpty())
        m_view->setCurrentIndex(m_model->first());
    check();
}

Nodes::NodeLinks NodePicker::chosen() const
{
    Nodes::NodeLinks links;
    if (!Nodes::NodesCollection::FromToken(m_token))
        return links;
    QModelIndexList rows = m_view->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex &l, const QModelIndex &r) {
        return l.internalId() < r.internalId();
    });
    for (const QModelIndex &row : rows) {
        const Nodes::NodeLink link(row.data(NodePickerModel::IdRole).toULongLong(), m_project);
        if (row.data(NodePickerModel::PickableRole).toBool() && link.isValid())
            links.push_back(link);
    }
    return links;
}

void NodePicker::check()
{
    const Nodes::NodeLinks links = chosen();
    m_take->setEnabled(!links.empty());
    m_found->setText(links.size() == 1
                         ? QString::fromStdString(links[0].GetLinkName(true))
                         : QStringLiteral("Подходящих узлов: %1").arg(m_model->count()));
}

void NodePicker::take()
{
    const Nodes::NodeLinks links = chosen();
    if (links.empty())
        return;
    emit picked(links);
    accept();
}

Nodes::NodeLink NodePicker::pick(const Nodes::NodesCollection *project, const QString &title,
                                 const Test &isPickable, const Nodes::NodeLink &current,
                                 QWidget *parent)
{
    Nodes::NodeLink found;
    auto *picker = new NodePicker(project, title, isPickable, parent);
    picker->setCurrent(current.GetNodeId());
    connect(picker, &NodePicker::picked, picker,
            [&found](const Nodes::NodeLinks &links) { found = links.front(); });
    picker->exec(); // deletes it
    return found;
}

// The arrows move through what was found while one goes on typing.
bool NodePicker::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent *>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
            key == Qt::Key_PageDown) {
            QCoreApplication::sendEvent(m_view, event);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace Editor
