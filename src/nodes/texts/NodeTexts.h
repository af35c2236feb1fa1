#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/texts/TextLanguage.h"

namespace Nodes {

class BasicSignal;

/// What languages look up about the node a text is for. All take null.
namespace NodeTexts {

/// Value of a property of links; none where the node has no such property.
NodeLinks LinksOf(const ConfigNode *node, unsigned valueId);
/// Null where the link leads to no signal.
const BasicSignal *SignalOf(const NodeLink &link);
/// Name, and the unit or what the signal is.
std::string MeaningOf(const BasicSignal &signal);
/// To try a text with before there is a value: the middle of the scale, "нет", "".
std::string SampleOf(const BasicSignal &signal);
TrialInput InputOf(const std::string &name, const BasicSignal &signal);

} // namespace NodeTexts

} // namespace Nodes
