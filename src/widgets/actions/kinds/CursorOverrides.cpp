#include "widgets/actions/kinds/CursorOverrides.h"

#include <QCursor>
#include <QGuiApplication>

namespace Widgets {

void CursorOverrides::give(int cursorShape)
{
    ++m_depth;
    QGuiApplication::setOverrideCursor(QCursor(Qt::CursorShape(cursorShape)));
}

void CursorOverrides::restore()
{
    if (m_depth == 0)
        return;
    --m_depth;
    QGuiApplication::restoreOverrideCursor();
}

} // namespace Widgets
