#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"
#include "utils/settings/Configurator.h"

#include <QStringList>
#include <QVector>

namespace Nodes {
class reportSchedule;
class systemCore;
} // namespace Nodes

namespace Widgets {

/// Up to when the reports of schedules were made and which files they are, kept over restarts with
/// the data of the station. GUI thread.
class WIDGETS_EXPORT ReportLedger : private Utils::Configurator
{
public:
    struct File
    {
        QString name;
        Nodes::Timestamp made = 0;
    };
    struct Account
    {
        Nodes::Timestamp done = 0; ///< end of the last period that is done with; 0: it is new
        QVector<File> files;       ///< of its own, the oldest first
    };

    explicit ReportLedger(const Nodes::systemCore &core);

    Account load(const Nodes::reportSchedule &schedule) const;
    [[nodiscard]] Nodes::Result save(const Nodes::reportSchedule &schedule,
                                     const Account &account) const;
    /// The files that the schedule keeps no longer at that time; taken out of the account.
    static QStringList takeOutdated(const Nodes::reportSchedule &schedule, Nodes::Timestamp now,
                                    Account &account);

private:
    QString m_project;
};

} // namespace Widgets
