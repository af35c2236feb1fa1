#include "utils/convert/MetaTypes.h"

namespace Utils {

// Signals name the types with and without their namespace, so both forms are known.
void registerMetaTypes()
{
    qRegisterMetaType<Nodes::BasicEvent>("BasicEvent");
    qRegisterMetaType<Nodes::BasicEvent>("Nodes::BasicEvent");
    qRegisterMetaType<Nodes::BasicProperty *>("BasicProperty*");
    qRegisterMetaType<Nodes::BasicProperty *>("Nodes::BasicProperty*");
    qRegisterMetaType<Nodes::NodeLink>("NodeLink");
    qRegisterMetaType<Nodes::NodeLink>("Nodes::NodeLink");
    qRegisterMetaType<Nodes::NodeLinks>("Nodes::NodeLinks");
    qRegisterMetaType<Nodes::NodeLinks>("std::vector<Nodes::NodeLink>");
    qRegisterMetaType<Nodes::SignalValue>("SignalValue");
    qRegisterMetaType<Nodes::SignalValue>("Nodes::SignalValue");
}

} // namespace Utils
