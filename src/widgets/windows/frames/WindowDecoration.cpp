#include "widgets/windows/frames/WindowDecoration.h"

#include <QWidget>

namespace Widgets {

const WindowDecoration *WindowDecoration::around(const QWidget *window)
{
    return window ? dynamic_cast<const WindowDecoration *>(window->parentWidget()) : nullptr;
}

} // namespace Widgets
