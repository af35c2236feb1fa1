#include "editor/properties/links/LinksWindow.h"

#include "editor/picker/NodePicker.h"
#include "editor/properties/PropertyModel.h"
#include "editor/properties/PropertyView.h"
#include "editor/properties/links/NewListNode.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/PropertyDescriptor.h"

#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

LinksWindow::LinksWindow(PropertyModel &model, const QString &key, const PropertyHost &host,
                         QWidget *parent)
    : QDialog(parent),
      m_model(model),
      m_key(key),
      m_host(host),
      m_list(new QListWidget(this)),
      m_details(new PropertyView(host, this)),
      m_error(new QLabel(this))
{
    const PropertyRow *row = PropertyModel::row(model.find(key));
    m_descriptor = row ? row->descriptor : nullptr;
    m_list->setAccessibleName(QStringLiteral("Список"));
    auto *halves = new QSplitter(this);
    halves->setChildrenCollapsible(false);
    halves->addWidget(m_list);
    halves->addWidget(m_details);
    m_error->setWordWrap(true);
    m_error->setStyleSheet(QStringLiteral("color: #8c1d18;"));
    m_details->setReadOnly(model.edits().readOnly());
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(halves, 1);
    layout->addWidget(m_error);
    if (m_descriptor)
        layout->addWidget(makeButtons(*m_descriptor));
    connect(m_list, &QListWidget::currentRowChanged, this, &LinksWindow::showCurrent);
    connect(&model, &PropertyModel::nodesChanged, this, &QDialog::reject);
    connect(&model, &PropertyModel::dataChanged, this, [this](const QModelIndex &changed) {
        if (changed.data(PropertyModel::KeyRole).toString() == m_key)
            fill();
    });
    connect(&model, &PropertyModel::refused, m_error, &QLabel::setText);
    resize(760, 460);
    fill();
    if (m_list->count() > 0)
        m_list->setCurrentRow(0);
}

LinksWindow::~LinksWindow() = default;

QPushButton *LinksWindow::addButton(QWidget *parent, const QString &text)
{
    auto *button = new QPushButton(text, parent);
    button->setAutoDefault(false);
    button->setEnabled(m_model.edits().readOnly().isEmpty());
    parent->layout()->addWidget(button);
    return button;
}

QWidget *LinksWindow::makeButtons(const Nodes::PropertyDescriptor &d)
{
    auto *bar = new QWidget(this);
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    connect(addButton(bar, QStringLiteral("Добавить…")), &QPushButton::clicked, this,
            &LinksWindow::pick);
    const std::vector<const Nodes::KindInfo *> kinds = listKinds(d);
    if (!kinds.empty()) {
        auto *menu = new QMenu(bar);
        for (const Nodes::KindInfo *kind : kinds)
            menu->addAction(QString::fromStdString(kind->nameRu), this,
                            [this, kind] { create(*kind); });
        addButton(bar, QStringLiteral("Создать"))->setMenu(menu);
    }
    connect(addButton(bar, QStringLiteral("Убрать")), &QPushButton::clicked, this,
            &LinksWindow::removeCurrent);
    connect(addButton(bar, QStringLiteral("Выше")), &QPushButton::clicked, this,
            [this] { moveCurrent(-1); });
    connect(addButton(bar, QStringLiteral("Ниже")), &QPushButton::clicked, this,
            [this] { moveCurrent(1); });
    layout->addStretch();
    QPushButton *close = addButton(bar, QStringLiteral("Закрыть"));
    close->setEnabled(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    return bar;
}

// Nodes whose lists differ have no list of their own to begin with.
QStringList LinksWindow::ids() const
{
    const PropertyRow *row = PropertyModel::row(m_model.find(m_key));
    if (!row || row->value.isMixed)
        return {};
    return QString::fromStdString(row->value.text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

void LinksWindow::fill()
{
    const int current = m_list->currentRow();
    const QSignalBlocker blocker(m_list);
    m_list->clear();
    const Nodes::NodesCollection *project = m_model.project();
    for (const QString &id : ids()) {
        const Nodes::ConfigNode *node = project ? project->FindNode(id.toULong()) : nullptr;
        auto *item = new QListWidgetItem(node ? QString::fromStdString(node->GetName())
                                              : QStringLiteral("узла %1 нет").arg(id),
                                         m_list);
        item->setToolTip(node ? QString::fromStdString(node->GetPath()) : item->text());
    }
    m_list->setCurrentRow(std::min(current, m_list->count() - 1));
    const PropertyRow *row = PropertyModel::row(m_model.find(m_key));
    if (row && row->value.isMixed)
        m_error->setText(QStringLiteral("У выбранных узлов списки разные. Первое же изменение "
                                        "задаст всем один список."));
    showCurrent();
}

void LinksWindow::showCurrent()
{
    const int place = m_list->currentRow();
    const QStringList all = ids();
    Nodes::NodeLinks nodes;
    if (place >= 0 && place < all.size())
        nodes.emplace_back(all.at(place).toULong(), m_model.project());
    if (nodes != m_details->properties().nodes().GetLinks())
        m_details->setNodes(nodes);
}

bool LinksWindow::set(const QStringList &ids, int current)
{
    const QModelIndex row = m_model.find(m_key);
    if (!row.isValid() || !m_model.setData(row.sibling(row.row(), PropertyModel::ColumnValue),
                                           ids.join(QLatin1Char(' '))))
        return false;
    fill();
    m_list->setCurrentRow(current);
    return true;
}

void LinksWindow::pick()
{
    auto *picker = new NodePicker(m_model.project(), *m_descriptor, this);
    connect(picker, &NodePicker::picked, this, &LinksWindow::add);
    picker->open();
}

void LinksWindow::add(const Nodes::NodeLinks &nodes)
{
    QStringList all = ids();
    for (const Nodes::NodeLink &node : nodes)
        all << QString::number(node.GetNodeId());
    (void)set(all, all.size() - 1);
}

void LinksWindow::removeCurrent()
{
    QStringList all = ids();
    const int place = m_list->currentRow();
    if (place < 0 || place >= all.size())
        return;
    all.removeAt(place);
    (void)set(all, std::min(place, all.size() - 1));
}

void LinksWindow::moveCurrent(int by)
{
    QStringList all = ids();
    const int place = m_list->currentRow();
    if (place < 0 || place >= all.size() || place + by < 0 || place + by >= all.size())
        return;
    all.move(place, place + by);
    (void)set(all, place + by);
}

void LinksWindow::create(const Nodes::KindInfo &kind)
{
    const QString error = addListNode(m_model, *m_descriptor, ids(), kind);
    m_error->setText(error);
    if (!error.isEmpty())
        return;
    m_model.refresh();
    fill();
    m_list->setCurrentRow(m_list->count() - 1);
}

} // namespace Editor
