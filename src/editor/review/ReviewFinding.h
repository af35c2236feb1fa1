#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <boost/any.hpp>

namespace Editor {

/// A property that would be right with another value, of the property's own C++ type.
struct ReviewChange
{
    Nodes::NodeLink node;
    unsigned property;
    boost::any value;
};

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
    Nodes::NodeLink where;           ///< element or screen
    QString what;                    ///< Russian, as the advice
    QString advice;                  ///< what to do; "" for a figure
    QVector<ReviewChange> mend = {}; ///< what can be done at once; mostly nothing
    QByteArray rule = {};            ///< id of the rule; "" for call-up and ways
};

using ReviewFindings = QVector<ReviewFinding>;

} // namespace Editor
