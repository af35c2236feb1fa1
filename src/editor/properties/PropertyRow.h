#pragma once

#include "nodes/model/NodeType.h"
#include "nodes/model/properties/PropertyProxy.h"

#include <QString>

#include <memory>
#include <vector>

namespace Nodes {
struct PropertyDescriptor;
}

namespace Editor {

/// One row of the property table with the rows below it. Owned by the row above.
struct PropertyRow
{
    enum enWhat {
        Group,       ///< heading: its children are the properties
        Kind,        ///< what the nodes are; not to be edited
        Name,        ///< of a single node
        Description, ///< of all
        Property,    ///< a property of the kinds
        Font,        ///< several properties that make a font; they are its children
        Children     ///< nodes of one family below a single node
    };

    enWhat what = Group;
    QString key; ///< stays with the row from selection to selection
    QString title;
    const Nodes::PropertyDescriptor *descriptor = nullptr;          ///< of a Property
    Nodes::NodeType::enNodeType family = Nodes::NodeType::TypeNone; ///< of Children
    Nodes::PropertySummary value{};
    QString error; ///< why the last value was refused

    PropertyRow *parent = nullptr;
    int place = 0; ///< among the rows of its parent
    std::vector<std::unique_ptr<PropertyRow>> rows{};

    /// Whether its value can be given by text; not whether it may be edited now.
    bool isEditable() const;
    PropertyRow &add(std::unique_ptr<PropertyRow> row)
    {
        row->parent = this;
        row->place = int(rows.size());
        return *rows.emplace_back(std::move(row));
    }
};

} // namespace Editor
