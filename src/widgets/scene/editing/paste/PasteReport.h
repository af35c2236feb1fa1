#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace Widgets {

/// What became of a paste, for the user: all texts are Russian.
struct WIDGETS_EXPORT PasteReport
{
    /// A reference that needs a look.
    struct Row
    {
        enum enState {
            Missing, ///< leads nowhere in this project; kept so that it is seen
            Doubtful ///< leads to the node of that number, but where it led nobody knows
        };

        Nodes::NodeLink element;
        QString elementName;
        QString property; ///< name of the property
        QString wanted;   ///< path of the node, or of the file, that it leads to
        enState state = Missing;
    };

    QString failure; ///< why nothing was pasted; "" when it was
    QString skipped; ///< what of the clipboard this program does not know
    QVector<Row> rows;
    QStringList templates; ///< names of those that came along

    bool isFailure() const { return !failure.isEmpty(); }
    /// Whether there is nothing that needs a look.
    bool isSound() const { return failure.isEmpty() && skipped.isEmpty() && rows.isEmpty(); }
    /// Whether there is nothing to say.
    bool isClean() const { return isSound() && templates.isEmpty(); }
    /// One line for a notice; "" when clean.
    QString summary() const;
};

} // namespace Widgets
