#include "editor/properties/PropertyModel.h"

#include "editor/properties/PropertyDrop.h"

#include "nodes/model/properties/PropertyDescriptor.h"
#include "utils/undo/IUndo.h"
#include "utils/undo/NodeCommand.h"

namespace Editor {

void PropertyModel::beginInteraction()
{
    m_interaction = Utils::Interaction::begin();
}

void PropertyModel::endInteraction()
{
    m_interaction = {};
}

void PropertyModel::cancelInteraction()
{
    Utils::NodeCommand::cancel(m_interaction, Utils::IUndo::undoStack());
    m_interaction = {};
    refresh();
}

QString PropertyModel::apply(const PropertyRow &row, const QString &text, bool isStep)
{
    switch (row.what) {
    case PropertyRow::Name:
        return m_edits.setName(nodes()[0], text);
    case PropertyRow::Description:
        return m_edits.setDescription(nodes(), text);
    case PropertyRow::Property:
        return m_edits.setProperty(nodes(), *row.descriptor, text,
                                   isStep ? m_interaction : Utils::Interaction());
    default:
        return m_edits.readOnly();
    }
}

bool PropertyModel::conclude(const QModelIndex &index, const QString &error)
{
    auto *changed = const_cast<PropertyRow *>(row(index));
    changed->error = error;
    emit refused(error);
    if (error.isEmpty())
        refresh();
    const QModelIndex cell = index.sibling(index.row(), ColumnValue);
    emit dataChanged(cell, cell);
    return error.isEmpty();
}

bool PropertyModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const PropertyRow *changed = row(index);
    if (!changed || nodes().empty() || !changed->isEditable())
        return false;
    QString text = value.toString();
    if (role == Qt::CheckStateRole)
        text = value.toInt() == Qt::Checked ? QStringLiteral("true") : QStringLiteral("false");
    else if (role != Qt::EditRole && role != StepRole)
        return false;
    return conclude(index, apply(*changed, text, role == StepRole || !m_interaction.isNone()));
}

bool PropertyModel::reset(const QModelIndex &index)
{
    const PropertyRow *changed = row(index);
    if (!changed || changed->value.isDefault)
        return false;
    if (changed->what == PropertyRow::Property && changed->isEditable())
        return setData(index, QString::fromStdString(changed->descriptor->defaultText));
    if (changed->what == PropertyRow::Description)
        return setData(index, QString());
    if (changed->what != PropertyRow::Font)
        return false;
    PropertyEdits::Texts texts;
    for (const auto &part : changed->rows)
        texts.emplace_back(part->descriptor->valueId,
                           QString::fromStdString(part->descriptor->defaultText));
    return setProperties(index, texts);
}

bool PropertyModel::setProperties(const QModelIndex &index, const PropertyEdits::Texts &texts)
{
    return row(index) && conclude(index, m_edits.setProperties(nodes(), texts, row(index)->title));
}

QStringList PropertyModel::mimeTypes() const
{
    return PropertyDrop::mimeTypes();
}

bool PropertyModel::canDropMimeData(const QMimeData *mime, Qt::DropAction, int, int,
                                    const QModelIndex &parent) const
{
    const PropertyRow *target = row(parent);
    return target && m_edits.readOnly().isEmpty() &&
           PropertyDrop::isTaken(*target, PropertyDrop::nodes(mime, project()));
}

bool PropertyModel::dropMimeData(const QMimeData *mime, Qt::DropAction action, int place,
                                 int column, const QModelIndex &parent)
{
    if (!canDropMimeData(mime, action, place, column, parent))
        return false;
    const PropertyRow *target = row(parent);
    const bool isTaken =
        setData(parent.sibling(parent.row(), ColumnValue),
                PropertyDrop::merged(*target, PropertyDrop::nodes(mime, project())));
    if (isTaken)
        emit dropped();
    return isTaken;
}

} // namespace Editor
