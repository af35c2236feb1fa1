#pragma once

namespace Nodes {

/// Codes of the alignment properties; any other code means centre.
enum enAlignmentHorizontal { AlignmentLeft = 1, AlignmentHCenter = 2, AlignmentRight = 3 };
enum enAlignmentVertical { AlignmentTop = 1, AlignmentVCenter = 2, AlignmentBottom = 3 };

} // namespace Nodes
