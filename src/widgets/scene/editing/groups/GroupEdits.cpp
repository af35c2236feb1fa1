#include "widgets/scene/editing/groups/GroupEdits.h"

#include "widgets/scene/editing/arrange/EditGroup.h"
#include "widgets/scene/editing/arrange/EditedElements.h"

#include "nodes/model/FreeName.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/GroupPath.h"

#include <algorithm>
#include <map>
#include <set>

namespace Widgets {

namespace {

namespace Path = Nodes::GroupPath;
using Elements = std::vector<Nodes::BasicWidget *>;

/// Without the number that made it free once: of "pump 2" another copy is "pump 3".
std::string unnumbered(const std::string &name)
{
    const std::size_t last = name.find_last_not_of("0123456789");
    const bool isNumbered =
        last != std::string::npos && last > 0 && last + 1 < name.size() && name[last] == ' ';
    return isNumbered ? name.substr(0, last) : name;
}

/// Names that the groups right inside of one group have, and those given to others meanwhile.
class TakenNames
{
public:
    /// Those of the elements in the layer but `without`.
    TakenNames(const Nodes::ConfigNode &layer, const std::string &outer, const Elements &without)
    {
        const std::set<const Nodes::ConfigNode *> left(without.begin(), without.end());
        for (const auto &child : layer.Children()) {
            const auto *element = dynamic_cast<const Nodes::BasicWidget *>(child.get());
            if (!element || left.count(element) != 0)
                continue;
            const std::string step = Path::Step(outer, element->GetGroup());
            if (!step.empty())
                m_names.insert(Path::Name(step));
        }
    }
    /// Those of the copies, which have no layer yet.
    explicit TakenNames(const Nodes::NodesArray &copies)
    {
        for (const Nodes::NodeLink &copy : copies) {
            if (const auto *element = dynamic_cast<const Nodes::BasicWidget *>(copy.GetNode()))
                m_names.insert(Path::Step({}, element->GetGroup()));
        }
    }
    std::string give(const std::string &wanted)
    {
        const std::vector<std::string_view> names(m_names.begin(), m_names.end());
        const bool isTaken = m_names.count(wanted) != 0;
        return *m_names.insert(Nodes::FreeName(names, isTaken ? unnumbered(wanted) : wanted, 2))
                    .first;
    }

private:
    std::set<std::string> m_names;
};

/// Renames outermost groups of paths, each the same way wherever it stands.
class Renaming
{
public:
    explicit Renaming(TakenNames &taken) : m_taken(taken) {}

    std::string renamed(const std::string &path)
    {
        const std::string first = Path::Step({}, path);
        if (first.empty())
            return {};
        auto known = m_names.find(first);
        if (known == m_names.end())
            known = m_names.emplace(first, m_taken.give(first)).first;
        return Path::Join(known->second, Path::Rest(first, path));
    }

private:
    TakenNames &m_taken;
    std::map<std::string, std::string> m_names;
};

/// What becomes a group: of each layer the elements, where they are two or more, groups as one.
std::vector<Elements> lotsOf(const EditedElements &edited)
{
    std::map<const Nodes::ConfigNode *, Elements> layers;
    for (Nodes::BasicWidget *element : edited.elements)
        layers[element->GetParent()].push_back(element);
    std::vector<Elements> lots;
    for (auto &[layer, elements] : layers) {
        if (layer && edited.scope.units(elements).size() > 1)
            lots.push_back(std::move(elements));
    }
    return lots;
}

/// The entered group, if all stand in it.
std::string outerOf(const EditedElements &edited, const Elements &lot)
{
    const bool areIn = std::all_of(lot.begin(), lot.end(), [&edited](const Nodes::BasicWidget *e) {
        return edited.scope.isIn(*e);
    });
    return areIn ? edited.scope.group : std::string();
}

} // namespace

bool GroupEdits::canGroup(const EditedElements &edited)
{
    return !lotsOf(edited).empty();
}

bool GroupEdits::canUngroup(const EditedElements &edited)
{
    return std::any_of(
        edited.elements.begin(), edited.elements.end(),
        [&edited](const Nodes::BasicWidget *e) { return !edited.scope.unitOf(*e).empty(); });
}

QUndoCommand *GroupEdits::group(const EditedElements &edited)
{
    EditGroup step(QStringLiteral("Группировка виджетов"));
    for (const Elements &lot : lotsOf(edited)) {
        const std::string outer = outerOf(edited, lot);
        TakenNames taken(*lot.front()->GetParent(), outer, {});
        const std::string made = Path::Join(outer, taken.give("Группа"));
        for (const Nodes::BasicWidget *element : lot)
            step.set(*element, Nodes::BasicWidget::Prop::Group,
                     Path::Join(made, Path::Rest(outer, element->GetGroup())));
    }
    return step.take();
}

QUndoCommand *GroupEdits::ungroup(const EditedElements &edited)
{
    EditGroup step(QStringLiteral("Разгруппировка виджетов"));
    // What was inside is beside the others now and keeps a name of its own.
    using Place = std::pair<const Nodes::ConfigNode *, std::string>;
    std::map<Place, TakenNames> taken;
    std::map<Place, Renaming> names;
    for (const Nodes::BasicWidget *element : edited.elements) {
        const Nodes::ConfigNode *layer = element->GetParent();
        const std::string unit = edited.scope.unitOf(*element);
        if (unit.empty())
            continue;
        const std::string outer = edited.scope.outerOf(*element);
        TakenNames &there =
            taken.try_emplace({layer, outer}, *layer, outer, edited.elements).first->second;
        Renaming &renaming = names.try_emplace({layer, unit}, there).first->second;
        const std::string left = renaming.renamed(Path::Rest(unit, element->GetGroup()));
        step.set(*element, Nodes::BasicWidget::Prop::Group, Path::Join(outer, left));
    }
    return step.take();
}

void GroupEdits::renew(const Nodes::NodesArray &copies, const Nodes::ConfigNode &layer,
                       const std::string &stripped, const std::string &outer)
{
    std::vector<std::pair<Nodes::BasicWidget *, std::string>> left;
    std::map<std::string, int> sizes; // of the outermost groups
    for (const Nodes::NodeLink &copy : copies) {
        auto *element = dynamic_cast<Nodes::BasicWidget *>(copy.GetNode());
        if (!element || element->GetGroup().empty())
            continue;
        const std::string own = element->GetGroup();
        left.emplace_back(element, Path::IsIn(stripped, own) ? Path::Rest(stripped, own) : own);
        ++sizes[Path::Step({}, left.back().second)];
    }
    TakenNames taken(layer, outer, {});
    Renaming names(taken);
    for (const auto &[element, path] : left) {
        // One of a group that was copied without the others is in none.
        const bool isAlone = sizes[Path::Step({}, path)] < 2;
        const std::string given = Path::Join(outer, isAlone ? std::string() : names.renamed(path));
        (void)element->SetProperty(Nodes::BasicWidget::Prop::Group, given); // any text is taken
    }
}

void GroupEdits::tellApart(const Nodes::NodesArray &copies,
                           const std::vector<unsigned long> &layers)
{
    if (layers.size() != copies.size())
        return;
    TakenNames taken(copies);
    std::map<std::string, unsigned long> owners; // layer of the first copy that has the name
    std::map<unsigned long, Renaming> names;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        auto *element = dynamic_cast<Nodes::BasicWidget *>(copies[i].GetNode());
        const std::string own = element ? element->GetGroup() : std::string();
        const unsigned long owner =
            owners.try_emplace(Path::Step({}, own), layers[i]).first->second;
        if (own.empty() || owner == layers[i])
            continue;
        Renaming &renaming = names.try_emplace(layers[i], taken).first->second;
        (void)element->SetProperty(Nodes::BasicWidget::Prop::Group, renaming.renamed(own));
    }
}

void GroupEdits::giveWay(EditGroup &step, const Elements &elements, const Nodes::ConfigNode &layer)
{
    std::map<const Nodes::ConfigNode *, Renaming> names; // of one name, but of two layers: two
    TakenNames taken(layer, {}, elements);
    for (const Nodes::BasicWidget *element : elements) {
        if (element->GetParent() == &layer || element->GetGroup().empty())
            continue;
        Renaming &renaming = names.try_emplace(element->GetParent(), taken).first->second;
        step.set(*element, Nodes::BasicWidget::Prop::Group, renaming.renamed(element->GetGroup()));
    }
}

} // namespace Widgets
