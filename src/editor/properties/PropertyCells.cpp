#include "editor/properties/PropertyCells.h"

#include "editor/properties/PropertyGroups.h"
#include "editor/properties/PropertyModel.h"
#include "editor/properties/PropertyTexts.h"
#include "editor/properties/values/ColorSwatch.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/PropertyDescriptor.h"

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QStringList>

namespace Editor {

namespace {

constexpr std::size_t maximumValues = 6;

QString textOf(const PropertyRow &row)
{
    return QString::fromStdString(row.value.text);
}

const Nodes::NodesCollection *projectOf(const Nodes::PropertyProxy &nodes)
{
    return nodes.GetNodes().empty() ? nullptr : nodes.GetNodes()[0].GetNodesCollection();
}

QString partText(const PropertyRow &font, unsigned valueId)
{
    for (const auto &part : font.rows) {
        if (part->descriptor->valueId == valueId)
            return part->value.isMixed ? QStringLiteral("?") : textOf(*part);
    }
    return {};
}

QString fontText(const PropertyRow &row)
{
    const FontProperties *font = fontOf(row.rows.front()->descriptor->valueId);
    QStringList parts{partText(row, font->family),
                      partText(row, font->size) + QStringLiteral(" пт")};
    const std::pair<unsigned, const char *> styles[] = {{font->bold, "полужирный"},
                                                        {font->italic, "курсив"},
                                                        {font->underline, "подчёркнутый"},
                                                        {font->strikeOut, "зачёркнутый"}};
    for (const auto &[valueId, name] : styles) {
        if (valueId != 0 && partText(row, valueId) == QLatin1String("true"))
            parts << QString::fromUtf8(name);
    }
    return parts.join(QStringLiteral(", "));
}

QString shown(const PropertyRow &row, const Nodes::PropertyProxy &nodes)
{
    if (row.value.isMixed)
        return row.what == PropertyRow::Font ? fontText(row) : PropertyTexts::mixed();
    switch (row.what) {
    case PropertyRow::Group:
        return {};
    case PropertyRow::Property:
        return PropertyTexts::shown(*row.descriptor, textOf(row), projectOf(nodes));
    case PropertyRow::Font:
        return fontText(row);
    case PropertyRow::Kind:
        return row.value.count > 1 ? QStringLiteral("%1 (%2)").arg(textOf(row)).arg(row.value.count)
                                   : textOf(row);
    default:
        return textOf(row);
    }
}

// Which values there are and of how many nodes.
QString counts(const PropertyRow &row, const Nodes::PropertyProxy &nodes)
{
    QStringList lines;
    std::size_t counted = 0;
    for (const auto &[text, count] : nodes.CountValues(row.descriptor->valueId, maximumValues)) {
        const QString value =
            PropertyTexts::shown(*row.descriptor, QString::fromStdString(text), projectOf(nodes));
        lines << QStringLiteral("%1: %2")
                     .arg(value.isEmpty() ? QStringLiteral("пусто") : value)
                     .arg(count);
        counted += count;
    }
    if (counted < row.value.count)
        lines << QStringLiteral("другие: %1").arg(row.value.count - counted);
    return lines.join(QLatin1Char('\n'));
}

QString linkPaths(const PropertyRow &row, const Nodes::NodesCollection *project)
{
    QStringList lines;
    for (const QString &id : textOf(row).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const Nodes::ConfigNode *node = project ? project->FindNode(id.toULong()) : nullptr;
        lines << (node ? QString::fromStdString(node->GetPath())
                       : QStringLiteral("Узла %1 нет в проекте.").arg(id));
    }
    return lines.join(QLatin1Char('\n'));
}

QString tip(const PropertyRow &row, int column, const Nodes::PropertyProxy &nodes)
{
    if (!row.error.isEmpty())
        return row.error;
    if (column == PropertyModel::ColumnReset)
        return row.value.isDefault || row.what == PropertyRow::Group
                   ? QString()
                   : QStringLiteral("Вернуть значение по умолчанию (Ctrl+Backspace)");
    if (!row.descriptor)
        return column == PropertyModel::ColumnValue ? shown(row, nodes) : QString();
    if (column == PropertyModel::ColumnName)
        return PropertyTexts::help(*row.descriptor, projectOf(nodes));
    if (row.value.isMixed)
        return counts(row, nodes);
    if (row.descriptor->binding.type == Nodes::PropertyType::Link ||
        row.descriptor->binding.type == Nodes::PropertyType::Links)
        return linkPaths(row, projectOf(nodes));
    if (row.descriptor->binding.type == Nodes::PropertyType::Secret)
        return shown(row, nodes);
    return textOf(row);
}

QVariant checkState(const PropertyRow &row)
{
    if (!row.descriptor || row.descriptor->binding.type != Nodes::PropertyType::Bool)
        return {};
    if (row.value.isMixed)
        return Qt::PartiallyChecked;
    return row.value.text == "true" ? Qt::Checked : Qt::Unchecked;
}

bool canReset(const PropertyRow &row)
{
    const bool isKept = row.what == PropertyRow::Property || row.what == PropertyRow::Font;
    const bool isFixed = row.descriptor && row.descriptor->editorHint == "readonly";
    return isKept && !isFixed && row.value.count > 0 && !row.value.isDefault;
}

QVariant decoration(const PropertyRow &row, int column)
{
    if (column == PropertyModel::ColumnReset)
        return canReset(row) ? QVariant(QIcon(QStringLiteral(":/editor/properties/reset.svg")))
                             : QVariant();
    const bool isColor =
        row.descriptor && row.descriptor->binding.type == Nodes::PropertyType::Color;
    if (column != PropertyModel::ColumnValue || !isColor || row.value.isMixed)
        return {};
    return colorSwatch(textOf(row));
}

QVariant foreground(const PropertyRow &row, int column)
{
    if (!row.error.isEmpty())
        return QColor(QStringLiteral("#b3261e"));
    const bool isWeak = row.value.isMixed || row.what == PropertyRow::Kind;
    return column == PropertyModel::ColumnValue && isWeak ? QVariant(QColor("#5d666e"))
                                                          : QVariant();
}

QVariant font(const PropertyRow &row, int column)
{
    QFont font;
    const bool isChanged = row.what != PropertyRow::Kind && row.what != PropertyRow::Name &&
                           row.what != PropertyRow::Children && !row.value.isDefault;
    font.setBold(row.what == PropertyRow::Group ||
                 (isChanged && column == PropertyModel::ColumnName));
    font.setItalic(row.value.isMixed && column == PropertyModel::ColumnValue);
    return font.bold() || font.italic() ? QVariant(font) : QVariant();
}

} // namespace

QVariant propertyCell(const PropertyRow &row, int column, int role,
                      const Nodes::PropertyProxy &nodes)
{
    const bool isValue = column == PropertyModel::ColumnValue;
    switch (role) {
    case Qt::DisplayRole:
        if (column == PropertyModel::ColumnName)
            return row.title;
        return isValue ? QVariant(shown(row, nodes)) : QVariant();
    case Qt::EditRole:
        return textOf(row);
    case Qt::ToolTipRole:
        return tip(row, column, nodes);
    case Qt::CheckStateRole:
        return isValue ? checkState(row) : QVariant();
    case Qt::DecorationRole:
        return decoration(row, column);
    case Qt::ForegroundRole:
        return foreground(row, column);
    case Qt::FontRole:
        return font(row, column);
    default:
        return {};
    }
}

} // namespace Editor
