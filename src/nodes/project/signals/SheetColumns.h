#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

class ConfigNode;
struct KindInfo;
struct PropertyDescriptor;

/// A column of a table of nodes.
struct SheetColumn
{
    enum What {
        Name, ///< path from the node whose table it is
        Kind,
        Description,
        Property,
        Setting ///< of other nodes, see SheetSettings; its descriptor is not of the row's node
    };

    What what = Setting;
    std::string title;
    const PropertyDescriptor *descriptor = nullptr; ///< of the first kind that has the property
};

/// Columns of tables of nodes, made from the descriptors of their kinds. Descriptors live as long
/// as the table of kinds.
class NODES_EXPORT SheetColumns
{
public:
    SheetColumns() = default;
    /// Name, kind, every property that is no secret, description. What tells the kinds apart, such
    /// as addresses, stands before what all of them have.
    explicit SheetColumns(const std::vector<const KindInfo *> &kinds);

    std::size_t GetCount() const { return m_columns.size(); }
    const SheetColumn &operator[](std::size_t index) const { return m_columns[index]; }
    void AddSetting(std::string title, const PropertyDescriptor *descriptor);
    /// By title or, for properties, by key, capitals or not; -1 without one.
    int Find(std::string_view title) const;
    /// The same, and where there is none: what lists from elsewhere usually mean, the same words in
    /// another order, or the only one whose title begins so.
    int Guess(std::string_view title) const;
    /// Whether a row names columns rather than a node and its values: it has the column of names by
    /// its own title, or by a usual one together with another column, and no number.
    bool IsHeader(const std::vector<std::string> &row) const;

    /// The property as the node's own kind has it; null when it has none such.
    static const PropertyDescriptor *DescriptorFor(const SheetColumn &column,
                                                   const ConfigNode &node);
    /// What stands in the node's cell; "" in that of a setting.
    static std::string GetText(const SheetColumn &column, const ConfigNode &node,
                               const ConfigNode &scope);
    /// Path of a node below `scope`, from there.
    static std::string PathFrom(const ConfigNode &scope, const ConfigNode &node);
    /// The same of a signal without the polling groups that it passes, which lists from elsewhere
    /// do not know; of another node its path.
    static std::string ShortPathFrom(const ConfigNode &scope, const ConfigNode &node);

private:
    int findUsual(std::string_view title) const;

    std::vector<SheetColumn> m_columns;
};

/// Whether the node has a row in tables of that family: parameters of templates are no signals that
/// anybody would tabulate.
NODES_EXPORT bool IsSheetRow(const ConfigNode &node, unsigned family);

/// Kinds of the nodes of a family below `scope`, each once, the one with most nodes first; where
/// there are none the kind that suits the scope: signals of a driver for that driver.
NODES_EXPORT std::vector<const KindInfo *> FindSheetKinds(const ConfigNode &scope, unsigned family);

} // namespace Nodes
