#pragma once

#include "nodes/NodesExport.h"

#include <optional>
#include <string>

namespace Nodes {

/// A number's text by a printf format, as projects give it for the labels of an axis. What a
/// project writes never reaches printf unread: a format has exactly one conversion, of a number,
/// with width and precision in it; "%%" and any other text may stand around. Plain value, any
/// thread.
class NODES_EXPORT NumberFormat
{
public:
    /// Nothing when `format` is none; `problem` then tells in Russian what is wrong with it.
    static std::optional<NumberFormat> Parse(const std::string &format,
                                             std::string *problem = nullptr);

    /// With a decimal point whatever the locale, no minus before a zero, a whole number for "%d",
    /// "%i", "%u". NoValueText where there is no number.
    std::string Text(double value) const;

private:
    NumberFormat() = default;

    std::string m_before;
    std::string m_conversion; ///< as printf takes it for a double
    std::string m_after;
};

} // namespace Nodes
