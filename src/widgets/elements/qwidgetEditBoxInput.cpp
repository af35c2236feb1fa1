// How the operator's edit begins and goes.
#include "widgets/elements/qwidgetEditBox.h"

#include "nodes/visual/elements/widgetEditBox.h"

#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QValidator>

namespace Widgets {

namespace {

int decimalsOf(const QString &number)
{
    const int point = number.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : number.size() - point - 1;
}

bool isFinishKey(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape;
}

} // namespace

void qwidgetEditBox::beginEditing()
{
    m_isIdle = false;
    m_isEditing = true;
    m_isUnfinished = true;
    m_previous = m_pending;
    m_previousValue = m_editBox->GetValue();
    noteStart();
    restartLimit();
    setReadOnly(false);
    const QSignalBlocker blocker(this);
    setText(m_pending);
    updateButtons();
}

void qwidgetEditBox::mousePressEvent(QMouseEvent *event)
{
    if (!isRuntime()) {
        event->ignore();
        return;
    }
    if (!m_editBox || !isInputAllowed() || event->button() != Qt::LeftButton)
        return;
    if (m_opensKeyboard) {
        event->ignore();
        m_previous = m_pending;
        noteStart();
        onBtnKeyboardClicked();
        return;
    }
    if (!m_isUnfinished)
        beginEditing();
    restartLimit();
    QLineEdit::mousePressEvent(event);
}

void qwidgetEditBox::onTextChanged(const QString &changed)
{
    const QSignalBlocker blocker(this);
    QString text = changed;
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    int position = 0;
    QString judged = text;
    if (text.isEmpty() || !m_validator ||
        m_validator->validate(judged, position) != QValidator::Invalid)
        m_pending = text;
    else if (const QString reason = undoneReason(text); !reason.isEmpty())
        tell(reason);
    const int cursor = cursorPosition();
    setText(m_pending);
    setCursorPosition(cursor);
    update();
}

void qwidgetEditBox::keyPressEvent(QKeyEvent *event)
{
    restartLimit();
    if (isFinishKey(event->key()) && m_isUnfinished) {
        finishBy(event->key() == Qt::Key_Escape);
        return;
    }
    const int cursor = cursorPosition();
    const QString before = text();
    const bool wasSelected = hasSelectedText();
    const int selected = selectionStart();
    const int selectedLength = selectionLength();
    const bool isDelete = event->key() == Qt::Key_Delete;
    QLineEdit::keyPressEvent(event);
    const int grown = text().size() - before.size();
    if (text() == before) {
        const bool isUndone = !event->text().isEmpty() && event->text().at(0).isPrint();
        if (isUndone && wasSelected)
            setSelection(selected, selectedLength);
        else if (isUndone)
            setCursorPosition(cursor);
    } else if (wasSelected) {
        const bool isErasing = isDelete || event->key() == Qt::Key_Backspace;
        setCursorPosition(isErasing ? cursor : cursor + 1);
    } else if (grown != 0) {
        setCursorPosition(grown < 0 && isDelete ? cursor : cursor + grown);
    }
}

// In a scene the focus may have nowhere to go, and then nobody tells that it was sent on.
void qwidgetEditBox::moveOn(const QKeyEvent &event)
{
    if (event.key() != Qt::Key_Tab && event.key() != Qt::Key_Backtab)
        return;
    if (isDirty())
        finishBy(false);
    else
        cancelEditing(QString());
}

QString qwidgetEditBox::steppedText(double value) const
{
    return QString::number(value, 'f', qMax(decimalsOf(m_pending), m_decimals));
}

void qwidgetEditBox::step(double direction)
{
    bool isNumber = false;
    const double value = m_pending.toDouble(&isNumber);
    const bool hasLimits = m_editBox->GetUseLimits();
    const double maximum = m_editBox->GetMaximum();
    const double minimum = m_editBox->GetMinimum();
    const double stepped = value + direction * m_step;
    const bool isBeyond = direction > 0 ? value <= maximum && stepped > maximum
                                        : value >= minimum && stepped < minimum;
    // Without a value there is nothing to step from.
    if (!isNumber || (hasLimits && isBeyond))
        return;
    const QString wanted = steppedText(stepped);
    const QPointer<qwidgetEditBox> alive(this);
    setText(wanted);
    if (m_pending != wanted) // the box does not take it
        return;
    restartLimit();
    const bool isWritten = setValue(convertValue(wanted, m_editBox->GetValueType()));
    if (!alive)
        return;
    if (isWritten)
        m_previous = wanted;
    else if (m_isEditing)
        setText(m_previous);
    m_startText = m_pending; // nothing more is typed
    m_startValue = m_previousValue;
}

void qwidgetEditBox::onBtnUpClicked()
{
    if (m_editBox && m_isEditing)
        step(1);
}

void qwidgetEditBox::onBtnDownClicked()
{
    if (m_editBox && m_isEditing)
        step(-1);
}

} // namespace Widgets
