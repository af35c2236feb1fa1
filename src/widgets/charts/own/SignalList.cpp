#include "widgets/charts/own/SignalList.h"

#include "widgets/dialogs/DialogLook.h"

#include "nodes/archive/ArchivedSignals.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/signals/BasicSignal.h"
#include "utils/convert/PlainTip.h"

#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int idRole = Qt::UserRole + 1;
constexpr int rowHeight = 32;

/// Tells what of it is dragged.
class SignalModel : public QStandardItemModel
{
public:
    using QStandardItemModel::QStandardItemModel;

    QStringList mimeTypes() const override { return {QLatin1String(SignalList::MimeType)}; }
    QMimeData *mimeData(const QModelIndexList &indexes) const override
    {
        QByteArray ids;
        for (const QModelIndex &index : indexes)
            ids += QByteArray::number(index.data(idRole).toULongLong()) + ' ';
        auto *data = new QMimeData;
        data->setData(QLatin1String(SignalList::MimeType), ids);
        return data;
    }
};

} // namespace

SignalList::SignalList(QWidget *parent)
    : QWidget(parent),
      m_search(new QLineEdit(this)),
      m_list(new QListView(this)),
      m_model(new SignalModel(this)),
      m_found(new QSortFilterProxyModel(this))
{
    m_search->setPlaceholderText(QStringLiteral("Найти сигнал"));
    m_search->setClearButtonEnabled(true);
    m_search->setMinimumHeight(TouchSize);
    MakeLegible(*m_search);
    MakeLegible(*m_list);
    m_found->setSourceModel(m_model);
    m_found->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_found->setSortLocaleAware(true);
    m_list->setModel(m_found);
    m_list->setUniformItemSizes(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setDragEnabled(true);
    m_list->setDragDropMode(QAbstractItemView::DragOnly);
    m_list->setTextElideMode(Qt::ElideMiddle);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_search);
    layout->addWidget(m_list);
    connect(m_search, &QLineEdit::textChanged, m_found,
            &QSortFilterProxyModel::setFilterFixedString);
    connect(m_list, &QListView::clicked, this, &SignalList::onPressed);
}

void SignalList::setProject(const Nodes::NodesCollection &project)
{
    m_model->clear();
    if (!project.GetRoot())
        return;
    for (const auto &[signal, order] : Nodes::FindArchivedSignals(*project.GetRoot())) {
        if (Nodes::IsForbiddenToView(*signal))
            continue;
        const QString path = QString::fromStdString(signal->GetPath());
        const QString described = QString::fromStdString(signal->GetDescription());
        auto *item = new QStandardItem(
            described.isEmpty() ? path : QStringLiteral("%1 (%2)").arg(described, path));
        item->setToolTip(Utils::PlainTip(item->text()));
        item->setData(qulonglong(signal->GetId()), idRole);
        item->setCheckState(Qt::Unchecked);
        item->setSizeHint({0, rowHeight});
        m_model->appendRow(item);
    }
    m_found->sort(0);
}

void SignalList::setTicked(const Nodes::NodeLinks &ticked)
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        QStandardItem *item = m_model->item(row);
        const auto id = static_cast<unsigned long>(item->data(idRole).toULongLong());
        const bool isTicked =
            std::any_of(ticked.begin(), ticked.end(),
                        [id](const Nodes::NodeLink &link) { return link.GetNodeId() == id; });
        item->setCheckState(isTicked ? Qt::Checked : Qt::Unchecked);
    }
}

std::vector<unsigned long> SignalList::idsOf(const QMimeData &data)
{
    std::vector<unsigned long> ids;
    for (const QByteArray &id : data.data(QLatin1String(MimeType)).split(' '))
        if (const unsigned long number = id.toULong(); number != 0)
            ids.push_back(number);
    return ids;
}

// A tap anywhere on a row ticks it: fingers do not hit boxes.
void SignalList::onPressed(const QModelIndex &index)
{
    const bool isTicked = index.data(Qt::CheckStateRole).toInt() != Qt::Checked;
    m_found->setData(index, isTicked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    emit toggled(static_cast<unsigned long>(index.data(idRole).toULongLong()), isTicked);
}

} // namespace Widgets
