#include "widgets/actions/kinds/qactionOverrideCursor.h"

#include "widgets/actions/kinds/CursorOverrides.h"

#include <QtCore/qnamespace.h>

namespace Widgets {

namespace {

Qt::CursorShape shapeOf(Nodes::actionOverrideCursor::enCursor cursor)
{
    using Nodes::actionOverrideCursor;
    switch (cursor) {
    case actionOverrideCursor::CursorBusy:
        return Qt::BusyCursor;
    case actionOverrideCursor::CursorCross:
        return Qt::CrossCursor;
    case actionOverrideCursor::CursorForbidden:
        return Qt::ForbiddenCursor;
    case actionOverrideCursor::CursorHand:
        return Qt::PointingHandCursor;
    case actionOverrideCursor::CursorHelp:
        return Qt::WhatsThisCursor;
    case actionOverrideCursor::CursorBlank:
        return Qt::BlankCursor;
    default:
        return Qt::WaitCursor;
    }
}

} // namespace

void qactionOverrideCursor::Execute()
{
    if (const auto *node = nodeAs<Node>())
        CursorOverrides::give(shapeOf(node->GetCursor()));
}

} // namespace Widgets
