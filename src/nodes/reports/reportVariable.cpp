#include "nodes/reports/reportVariable.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo reportVariable::Kind()
{
    return KindBuilder::For<reportVariable>("reportVariable", "Report variable",
                                            "Переменная отчёта")
        .Property<&reportVariable::m_value>(Prop::Value, "Value", "Значение");
}

} // namespace Nodes
