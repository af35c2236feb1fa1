#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"

#include <boost/any.hpp>

#include <string>
#include <vector>

namespace Nodes {

/// A cell of a table that was not taken over.
struct SheetRefusal
{
    std::size_t row = 0; ///< of the text, from 1, its header included; 0: the whole table
    std::string column;  ///< title
    std::string text;    ///< what stood there
    std::string reason;  ///< Russian: what is wrong and what to do
};

/// What taking over a table would do; nothing has been changed yet. GUI thread.
struct NODES_EXPORT SheetPlan
{
    struct Change
    {
        NodeLink node;
        unsigned valueId;
        boost::any value; ///< of the property's own type
    };
    struct Text
    {
        NodeLink node;
        std::string text;
    };
    /// A node to be added: a clone that the project holds, with all below it.
    struct Addition
    {
        NodeLink clone;
        NodeLink parent;
    };

    /// What becomes of a row of the text.
    enum Fate : unsigned char {
        LeftOut, ///< blank, or a header
        Same,    ///< says what is so already
        Changed,
        Added,
        Refused ///< as a whole; one that only lost cells is Same, Changed or Added
    };
    /// A cell that changes what a node has.
    struct Mark
    {
        std::size_t row;    ///< of the text, from 1
        std::size_t column; ///< of the text, from 0
        std::string before; ///< what stands there now
    };

    std::vector<Fate> fates; ///< by row of the text, from 0
    std::vector<Mark> marks; ///< in the order of the text
    std::vector<Change> changes;
    std::vector<Text> names;
    std::vector<Text> descriptions;
    std::vector<Addition> additions;
    NodeLinks removals;
    std::vector<SheetRefusal> refusals;
    std::size_t added = 0;   ///< rows that become nodes
    std::size_t updated = 0; ///< rows of nodes that are there, with something to change

    bool isEmpty() const
    {
        return changes.empty() && names.empty() && descriptions.empty() && additions.empty() &&
               removals.empty();
    }
    void Refuse(std::size_t row, std::string column, std::string text, std::string reason)
    {
        refusals.push_back({row, std::move(column), std::move(text), std::move(reason)});
    }
    /// Destroys the clones of a plan that is not carried out.
    void Discard();
};

} // namespace Nodes
