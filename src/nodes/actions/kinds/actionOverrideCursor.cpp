#include "nodes/actions/kinds/actionOverrideCursor.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionOverrideCursor::Kind()
{
    return KindBuilder::For<actionOverrideCursor>("actionOverrideCursor", "Override cursor",
                                                  "Замена указателя")
        .Property<&actionOverrideCursor::m_cursor>(Prop::Cursor, "Cursor", "Указатель")
        .Choice(CursorWait, "wait", "Ожидание")
        .Choice(CursorBusy, "busy", "Занят")
        .Choice(CursorCross, "cross", "Перекрестие")
        .Choice(CursorForbidden, "forbidden", "Запрещено")
        .Choice(CursorHand, "hand", "Рука")
        .Choice(CursorHelp, "help", "Справка")
        .Choice(CursorBlank, "blank", "Невидимый");
}

} // namespace Nodes
