// How the operator's edit ends, and what becomes of what was typed.
#include "widgets/context/ActionSink.h"
#include "widgets/elements/input/InputNotice.h"
#include "widgets/elements/input/ValueWriter.h"
#include "widgets/elements/qwidgetEditBox.h"

#include "nodes/model/services/AccessCheck.h"
#include "nodes/visual/elements/widgetEditBox.h"

#include <QDialog>
#include <QFocusEvent>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>

namespace Widgets {

void qwidgetEditBox::noteStart()
{
    m_startText = m_pending;
    m_startValue = m_editBox->GetValue();
    m_startUser = Nodes::UserNameFor(*m_editBox);
}

bool qwidgetEditBox::isSameUser() const
{
    return m_editBox && m_startUser == Nodes::UserNameFor(*m_editBox);
}

void qwidgetEditBox::tell(const QString &text) const
{
    InputNotice::show(*this, text);
}

void qwidgetEditBox::restartLimit()
{
    if (m_editBox && m_editBox->GetEditTimeout() > 0)
        m_limit.start(m_editBox->GetEditTimeout() * 1000);
}

void qwidgetEditBox::onTimeLimit()
{
    abandon(QStringLiteral("Время ввода вышло."));
}

void qwidgetEditBox::abandon(const QString &reason)
{
    if (!m_dialog) {
        cancelEditing(reason);
        return;
    }
    m_abandoned = reason; // told by who runs the dialog
    m_dialog->reject();
}

void qwidgetEditBox::closeEditing()
{
    m_isEditing = false;
    m_isIdle = true;
    m_limit.stop();
    setReadOnly(true);
    setCursor(Qt::IBeamCursor);
    updateButtons();
    update();
}

void qwidgetEditBox::cancelEditing(const QString &reason)
{
    if (!m_isUnfinished)
        return;
    const bool isTold = isDirty() && !reason.isEmpty();
    const QString typed = m_pending;
    m_isUnfinished = false;
    m_pending = m_previous;
    {
        const QSignalBlocker blocker(this);
        clear();
    }
    closeEditing();
    if (isTold)
        tell(QStringLiteral("Ввод отменён, %1 не записано. %2").arg(typed, reason));
}

void qwidgetEditBox::finishBy(bool isEscape)
{
    closeEditing();
    if (isEscape) {
        m_pending = m_previous;
        const QSignalBlocker blocker(this);
        setText(m_pending);
    }
    const QPointer<qwidgetEditBox> alive(this);
    m_isRestoring = isEscape;
    emit editingFinished();
    if (alive)
        m_isRestoring = false;
}

Nodes::SignalValue qwidgetEditBox::wantedValue(const QString &typed) const
{
    if (m_isRestoring)
        return m_previousValue;
    return typed == m_startText ? m_startValue : convertValue(typed, m_editBox->GetValueType());
}

// Qt tells the end of an edit also on leaving a box that is not being edited.
void qwidgetEditBox::onEditingFinished()
{
    if (!m_isUnfinished)
        return;
    const QString typed = text();
    const bool isTyped = typed != m_startText && !m_isRestoring;
    m_isUnfinished = false;
    {
        const QSignalBlocker blocker(this);
        clear();
    }
    bool isWanted = m_editBox && isAcceptable(typed);
    if (!isWanted && m_editBox && isTyped && !typed.isEmpty())
        tell(QStringLiteral("%1 не записано. %2").arg(typed, problemOf(typed)));
    if (m_isRestoring && m_previousValue.GetQuality() == Nodes::Quality::Bad)
        isWanted = false; // there was no value to write again
    const Nodes::SignalValue value = isWanted ? wantedValue(typed) : Nodes::SignalValue();
    const QPointer<qwidgetEditBox> alive(this);
    // The text is judged first: nobody is asked about one that would be refused.
    if (isWanted && m_editBox->isConfirmed())
        isWanted = confirmed(typed);
    if (alive && isWanted) {
        m_pending = typed;
        isWanted = setValue(value);
    }
    if (!alive)
        return;
    if (!isWanted)
        m_pending = m_previous;
    update();
}

bool qwidgetEditBox::setValue(const Nodes::SignalValue &value)
{
    if (!m_editBox)
        return false; // it went while the operator was being asked
    if (!isSameUser()) {
        tell(QStringLiteral("Значение не записано. Сменился пользователь."));
        return false;
    }
    const Nodes::Result result =
        context().actions().write(*m_editBox, [&] { return m_editBox->WriteValue(value); });
    if (result) {
        m_previousValue = value;
        ValueWriter::runAfterWrite(*this, context(), *m_editBox);
        return true;
    }
    {
        const QSignalBlocker blocker(this);
        clear();
    }
    update();
    report(result);
    return false;
}

// Behind the message stands the live value, nothing that looks as if it were written.
void qwidgetEditBox::report(const Nodes::Result &result)
{
    const QPointer<qwidgetEditBox> alive(this);
    m_isDialogOpen = true;
    m_limit.stop();
    ValueWriter::report(context(), result);
    if (!alive)
        return;
    m_isDialogOpen = false;
    if (m_isEditing)
        restartLimit();
}

bool qwidgetEditBox::isOverButton() const
{
    return m_up->underMouse() || m_down->underMouse() || m_keyboard->underMouse();
}

// On a touch panel a press comes without the pointer entering first.
bool qwidgetEditBox::isHit(const QPoint &globalPosition) const
{
    const QGraphicsProxyWidget *host = window()->graphicsProxyWidget();
    if (!host || !host->scene())
        return rect().contains(mapFromGlobal(globalPosition));
    const QRectF place(mapTo(window(), QPoint(0, 0)), size());
    const QList<QGraphicsView *> views = host->scene()->views();
    return std::any_of(views.begin(), views.end(), [&](const QGraphicsView *view) {
        const QPoint local = view->viewport()->mapFromGlobal(globalPosition);
        return place.contains(host->mapFromScene(view->mapToScene(local)));
    });
}

bool qwidgetEditBox::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (m_dialog && (type == QEvent::KeyPress || type == QEvent::MouseButtonPress))
        restartLimit();
    if (type == QEvent::MouseButtonPress && !m_isIdle && !m_isDialogOpen &&
        !isHit(static_cast<QMouseEvent *>(event)->globalPos()))
        cancelEditing(QStringLiteral("Нажатие вне поля."));
    return QLineEdit::eventFilter(watched, event);
}

// Moving on by the keyboard finishes the edit, a press elsewhere gives it up. What takes the focus
// otherwise is not the operator's doing: the typing stays, neither written nor lost.
void qwidgetEditBox::focusOutEvent(QFocusEvent *event)
{
    const Qt::FocusReason reason = event->reason();
    const bool isMovedOn = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                           reason == Qt::ShortcutFocusReason;
    const bool isFinished = isMovedOn && !m_isDialogOpen;
    if (isOverButton() && !isFinished)
        return;
    if (reason == Qt::MouseFocusReason && !m_isDialogOpen)
        cancelEditing(QStringLiteral("Нажатие вне поля."));
    const QPointer<qwidgetEditBox> alive(this);
    {
        // Qt tells the end of the edit for every reason.
        const QSignalBlocker blocker(isFinished ? nullptr : this);
        QLineEdit::focusOutEvent(event);
    }
    if (alive && isFinished && m_isEditing)
        closeEditing();
}

} // namespace Widgets
