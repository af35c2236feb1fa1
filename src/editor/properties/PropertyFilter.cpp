#include "editor/properties/PropertyFilter.h"

#include "editor/properties/PropertyRow.h"

#include "editor/properties/PropertyModel.h"
#include "nodes/model/properties/PropertyDescriptor.h"

namespace Editor {

namespace {

bool has(const PropertyRow &row, const QString &text)
{
    if (row.title.contains(text, Qt::CaseInsensitive))
        return true;
    return row.descriptor &&
           (QString::fromStdString(row.descriptor->key).contains(text, Qt::CaseInsensitive) ||
            QString::fromStdString(row.descriptor->nameEn).contains(text, Qt::CaseInsensitive));
}

} // namespace

PropertyFilter::PropertyFilter(QObject *parent) : QSortFilterProxyModel(parent)
{
    setRecursiveFilteringEnabled(true);
}

PropertyFilter::~PropertyFilter() = default;

void PropertyFilter::search(const QString &text)
{
    m_text = text.trimmed();
    invalidateFilter();
}

bool PropertyFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    if (m_text.isEmpty())
        return true;
    const PropertyRow *shown = PropertyModel::row(sourceModel()->index(row, 0, parent));
    for (; shown && shown->parent; shown = shown->parent) {
        if (has(*shown, m_text))
            return true;
    }
    return false;
}

} // namespace Editor
