#include "nodes/texts/NodeTexts.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

namespace Nodes::NodeTexts {

NodeLinks LinksOf(const ConfigNode *node, unsigned valueId)
{
    const KindInfo *kind = node ? node->GetKind() : nullptr;
    const PropertyDescriptor *d = kind ? kind->FindProperty(valueId) : nullptr;
    const bool isList = d && d->binding.type == PropertyType::Links;
    return isList ? *static_cast<const NodeLinks *>(d->binding.data(*node)) : NodeLinks();
}

const BasicSignal *SignalOf(const NodeLink &link)
{
    return dynamic_cast<const BasicSignal *>(link.GetNode());
}

std::string MeaningOf(const BasicSignal &signal)
{
    const std::string &name =
        signal.GetDescription().empty() ? signal.GetName() : signal.GetDescription();
    return signal.GetUnit().empty() ? name : name + ", " + signal.GetUnit();
}

std::string SampleOf(const BasicSignal &signal)
{
    switch (signal.GetValueType()) {
    case enSignalValueType::Bool:
        return "false";
    case enSignalValueType::String:
        return {};
    default:
        return FormatDouble((signal.GetMinimum() + signal.GetMaximum()) / 2);
    }
}

TrialInput InputOf(const std::string &name, const BasicSignal &signal)
{
    return {name, MeaningOf(signal), signal.GetValueType(), SampleOf(signal)};
}

} // namespace Nodes::NodeTexts
