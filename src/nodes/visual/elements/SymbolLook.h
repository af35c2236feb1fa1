#pragma once

namespace Nodes {

/// How a symbol shows the state of equipment: by shape and fill; only Fault has a saturated colour.
enum class SymbolLook {
    Plain = 0,  ///< as drawn
    Off = 1,    ///< stopped, closed: hollow
    On = 2,     ///< running, open: filled
    Moving = 3, ///< on its way: filled by half
    Fault = 4,  ///< hollow in the colour of faults, with a sign
    Unknown = 5 ///< dashed, with a question mark; never configured
};

} // namespace Nodes
