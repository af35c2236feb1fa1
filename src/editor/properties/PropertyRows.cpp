#include "editor/properties/PropertyRows.h"

#include "editor/properties/PropertyGroups.h"
#include "editor/properties/children/ChildFamilies.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/PropertyDescriptor.h"

#include <algorithm>
#include <map>

namespace Editor {

namespace {

using Nodes::PropertyProxy;
using Nodes::PropertySummary;

std::unique_ptr<PropertyRow> makeRow(PropertyRow::enWhat what, const QString &key,
                                     const QString &title)
{
    auto row = std::make_unique<PropertyRow>();
    row->what = what;
    row->key = key;
    row->title = title;
    return row;
}

std::unique_ptr<PropertyRow> propertyRow(const Nodes::PropertyDescriptor &d)
{
    auto row = makeRow(PropertyRow::Property, QString::fromStdString(d.key),
                       QString::fromStdString(d.nameRu));
    row->descriptor = &d;
    return row;
}

const Nodes::ConfigNode *firstOf(const PropertyProxy &nodes)
{
    for (const Nodes::NodeLink &link : nodes.GetNodes()) {
        if (const Nodes::ConfigNode *node = link.GetNode())
            return node;
    }
    return nullptr;
}

void addGeneral(PropertyRow &top, bool isSingle)
{
    PropertyRow &group =
        top.add(makeRow(PropertyRow::Group, QStringLiteral("#general"), QStringLiteral("Общее")));
    group.add(makeRow(PropertyRow::Kind, QStringLiteral("#kind"), QStringLiteral("Тип")));
    if (isSingle)
        group.add(makeRow(PropertyRow::Name, QStringLiteral("#name"), QStringLiteral("Имя")));
    group.add(makeRow(PropertyRow::Description, QStringLiteral("#description"),
                      QStringLiteral("Описание")));
}

void addProperties(PropertyRow &top, const Nodes::KindInfo &kind, const PropertyProxy &nodes)
{
    std::map<const PropertyGroup *, std::unique_ptr<PropertyRow>> groups;
    std::map<const FontProperties *, PropertyRow *> fonts;
    for (const Nodes::PropertyDescriptor *d : nodes.GetDescriptors()) {
        const PropertyGroup &group = groupOf(kind, *d);
        auto &heading = groups[&group];
        if (!heading)
            heading = makeRow(PropertyRow::Group, QLatin1Char('#') + QLatin1String(group.key),
                              QString::fromUtf8(group.title));
        const FontProperties *font = fontOf(d->valueId);
        if (!font) {
            heading->add(propertyRow(*d));
            continue;
        }
        PropertyRow *&row = fonts[font];
        if (!row)
            row = &heading->add(makeRow(PropertyRow::Font,
                                        QStringLiteral("#font%1").arg(font->family),
                                        QString::fromUtf8(font->title)));
        row->add(propertyRow(*d));
    }
    for (const PropertyGroup &group : propertyGroups()) {
        if (groups[&group])
            top.add(std::move(groups[&group]));
    }
}

void addChildren(PropertyRow &top, const Nodes::KindInfo &kind)
{
    const std::vector<ChildFamily> families = childFamilies(kind);
    if (families.empty())
        return;
    PropertyRow &group =
        top.add(makeRow(PropertyRow::Group, QStringLiteral("#parts"), QStringLiteral("Состав")));
    for (const ChildFamily &family : families) {
        auto row = makeRow(PropertyRow::Children, QStringLiteral("#children%1").arg(family.family),
                           family.title);
        row->family = family.family;
        group.add(std::move(row));
    }
}

PropertySummary kindSummary(const PropertyProxy &nodes)
{
    PropertySummary summary;
    for (const Nodes::NodeLink &link : nodes.GetNodes()) {
        const Nodes::ConfigNode *node = link.GetNode();
        if (!node || !node->GetKind())
            continue;
        const std::string &name = node->GetKind()->nameRu;
        if (++summary.count == 1)
            summary.text = name;
        summary.isMixed = summary.isMixed || summary.text != name;
    }
    return summary;
}

PropertySummary childrenSummary(const PropertyRow &row, const PropertyProxy &nodes)
{
    PropertySummary summary;
    const Nodes::ConfigNode *node = firstOf(nodes);
    const int count = node ? node->GetNodeCount(row.family) : 0;
    summary.count = 1;
    summary.text = std::to_string(count);
    summary.isDefault = count == 0;
    return summary;
}

PropertySummary summaryOf(const PropertyRow &row, const PropertyProxy &nodes)
{
    switch (row.what) {
    case PropertyRow::Property:
        return nodes.GetSummary(row.descriptor->valueId);
    case PropertyRow::Name:
        return nodes.GetNameSummary();
    case PropertyRow::Description:
        return nodes.GetDescriptionSummary();
    case PropertyRow::Kind:
        return kindSummary(nodes);
    case PropertyRow::Children:
        return childrenSummary(row, nodes);
    case PropertyRow::Group:
    case PropertyRow::Font:
        break;
    }
    return {};
}

bool isSame(const PropertySummary &left, const PropertySummary &right)
{
    return left.text == right.text && left.count == right.count && left.isMixed == right.isMixed &&
           left.isDefault == right.isDefault;
}

// A font is what its parts are.
PropertySummary combined(const PropertyRow &font)
{
    PropertySummary all;
    all.isDefault = true;
    for (const auto &part : font.rows) {
        all.count = std::max(all.count, part->value.count);
        all.isMixed = all.isMixed || part->value.isMixed;
        all.isDefault = all.isDefault && part->value.isDefault;
        all.text += part->value.text + '\n';
    }
    return all;
}

} // namespace

std::unique_ptr<PropertyRow> makePropertyRows(const PropertyProxy &nodes)
{
    auto top = std::make_unique<PropertyRow>();
    const Nodes::ConfigNode *first = firstOf(nodes);
    if (!first || !first->GetKind())
        return top;
    const bool isSingle = nodes.GetNodes().size() == 1;
    addGeneral(*top, isSingle);
    addProperties(*top, *first->GetKind(), nodes);
    if (isSingle)
        addChildren(*top, *first->GetKind());
    return top;
}

bool refreshPropertyRow(PropertyRow &row, const PropertyProxy &nodes)
{
    bool isChanged = false;
    for (const auto &part : row.rows)
        isChanged = refreshPropertyRow(*part, nodes) || isChanged;
    const PropertySummary now =
        row.what == PropertyRow::Font ? combined(row) : summaryOf(row, nodes);
    isChanged = isChanged || !isSame(now, row.value);
    row.value = now;
    return isChanged;
}

bool isSameTable(const PropertyRow &left, const PropertyRow &right)
{
    return left.what == right.what && left.key == right.key &&
           left.descriptor == right.descriptor && left.rows.size() == right.rows.size() &&
           std::equal(left.rows.begin(), left.rows.end(), right.rows.begin(),
                      [](const auto &l, const auto &r) { return isSameTable(*l, *r); });
}

} // namespace Editor
