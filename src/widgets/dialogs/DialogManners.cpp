#include "widgets/dialogs/DialogManners.h"

#include "widgets/dialogs/DialogPlacement.h"
#include "widgets/windows/desktop/Screens.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>

#include <utility>

namespace Widgets {

DialogManners::DialogManners(QWidget &dialog) : m_dialog(dialog) {}

DialogManners::~DialogManners() = default;

void DialogManners::seat(const DialogRequest &request)
{
    m_element = request.element;
    m_display = request.display;
}

void DialogManners::settle()
{
    if (!m_dialog.isWindow())
        return;
    if (!std::exchange(m_isSettled, true)) {
        if (!m_element && !m_display && !m_dialog.parentWidget() &&
            !m_dialog.testAttribute(Qt::WA_Moved))
            m_display = ScreenNumber(QApplication::activeWindow());
        if (m_element)
            DialogPlacement::beside(m_dialog, *m_element);
        else if (m_display)
            DialogPlacement::centre(m_dialog, *m_display);
    }
    DialogPlacement::fit(m_dialog);
}

bool DialogManners::takesKey(const QKeyEvent &event) const
{
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    auto *pressed = isEnter ? qobject_cast<QPushButton *>(m_dialog.focusWidget()) : nullptr;
    if (pressed)
        pressed->click();
    return pressed;
}

} // namespace Widgets
