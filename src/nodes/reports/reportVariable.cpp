#include "nodes/reports/reportVariable.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo reportVariable::Kind()
{
    return KindBuilder::For<reportVariable>(Subtype, "reportVariable", "Report variable",
                                            "Переменная отчёта")
        .Property<&reportVariable::m_value>(13201, "value", "Value", "Значение");
}

} // namespace Nodes
