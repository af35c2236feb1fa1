#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/display/ReportChoice.h"

#include "nodes/values/Result.h"
#include "utils/settings/Configurator.h"

#include <optional>

namespace Nodes {
class BasicReport;
class systemCore;
} // namespace Nodes

namespace Widgets {

/// Which period an operator looks at in a report, kept over restarts with the data of the station,
/// for each user of each project. A period of the past is kept as its kind only: who comes back
/// next week wants the shift of then. Free spans are kept as they are. GUI thread.
class WIDGETS_EXPORT ReportChoiceStore : private Utils::Configurator
{
public:
    /// Of whoever is logged in now.
    explicit ReportChoiceStore(const Nodes::systemCore &model);

    std::optional<ReportChoice> load(const Nodes::BasicReport &report) const;
    [[nodiscard]] Nodes::Result save(const Nodes::BasicReport &report,
                                     const ReportChoice &choice) const;

private:
    QString m_owner;
};

} // namespace Widgets
