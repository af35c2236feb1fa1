#include "widgets/elements/input/ButtonHold.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

namespace Widgets {

void ButtonHold::begin()
{
    ++m_number;
    QCoreApplication::instance()->installEventFilter(this);
}

void ButtonHold::end()
{
    QCoreApplication::instance()->removeEventFilter(this);
}

bool ButtonHold::eventFilter(QObject *watched, QEvent *event)
{
    const auto *shown = event->type() == QEvent::Show ? qobject_cast<QWidget *>(watched) : nullptr;
    if ((shown && shown->windowType() == Qt::Popup) || event->type() == QEvent::WindowBlocked) {
        emit lost();
    } else if (event->type() == QEvent::MouseButtonRelease &&
               static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
        // Afterwards: if it is the button's own, the button takes it itself. Events that piled up
        // may have pressed it anew by then.
        const auto lose = [this, number = m_number] {
            if (number == m_number)
                emit lost();
        };
        QMetaObject::invokeMethod(this, lose, Qt::QueuedConnection);
    }
    return false;
}

} // namespace Widgets
