#include "nodes/serial/UnknownNode.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/FindingCode.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

KindInfo UnknownNode::Kind()
{
    return KindBuilder::For<UnknownNode>("unknown", "Unknown element", "Неизвестный элемент")
        .Property<&UnknownNode::m_xml>(Prop::Xml, "Source text", "Исходный текст")
        .Hint("readonly");
}

void UnknownNode::Validate(ValidationResults &results) const
{
    results.Add(GetNodeLink(), Result(this, Result::NotAvailable),
                GetPath() + ": элемент неизвестного вида. Он сохраняется в файле без изменений, но "
                            "не работает; обновите программу или удалите его.",
                FindingCode::UnknownKind);
}

} // namespace Nodes
