#pragma once

#include <QString>

namespace LimeReport {

/// Why an item can't be drawn.
struct ItemFault
{
    QString error; ///< for the list of errors: what, and what to do
    QString shown; ///< on the page, for operators

    bool isEmpty() const { return error.isEmpty(); }
};

} // namespace LimeReport
