#pragma once

#include "nodes/model/links/ValueLink.h"

#include <vector>

namespace Nodes {

/// Answer to a request for the values that signals had at one moment. Values an archive does not
/// know hold an error. Plain value, any thread.
struct FetchValueResponse
{
    unsigned long request = 0;     ///< number that the request was given
    Result result;                 ///< of the request as a whole
    std::vector<ValueLink> values; ///< in the order asked for
};

} // namespace Nodes
