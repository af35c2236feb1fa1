#include "apps/records/SampleRow.h"

namespace Records {

void SampleRow::addTo(Nodes::SampleRun &run) const
{
    switch (kind) {
    case Nodes::SampleKind::Gap:
        run.AddGap(time, quality);
        break;
    case Nodes::SampleKind::Number:
        run.Add(time, number, quality);
        break;
    case Nodes::SampleKind::Logical:
        run.AddLogical(time, number != 0, quality);
        break;
    case Nodes::SampleKind::Text:
        run.AddText(time, text, quality);
        break;
    }
}

} // namespace Records
