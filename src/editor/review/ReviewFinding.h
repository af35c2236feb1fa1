#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QString>
#include <QVector>

namespace Editor {

/// What a review of screens has to say about one place.
struct ReviewFinding
{
    enum Severity {
        Measure, ///< a figure, nothing to do
        Hint,    ///< would be better otherwise
        Warning, ///< an operator may misread it
        Fault    ///< cannot be read or reached
    };

    Severity severity = Hint;
    Nodes::NodeLink where; ///< element or screen
    QString what;          ///< Russian, as the advice
    QString advice;        ///< what to do; "" for a figure
};

using ReviewFindings = QVector<ReviewFinding>;

} // namespace Editor
