// How the operator's edit begins, goes and ends.
#include "widgets/dialogs/VirtualKeyboard.h"
#include "widgets/dialogs/VirtualNumpad.h"
#include "widgets/elements/ValueWriter.h"
#include "widgets/elements/qwidgetEditBox.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/visual/widgetEditBox.h"

#include <QApplication>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QValidator>

#include <limits>

namespace Widgets {

namespace {

// Without an exponent, which no field takes.
QString numberText(double value)
{
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

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

QString qwidgetEditBox::inputProblem() const
{
    if (!m_editBox || !m_isEditing || text().isEmpty() || isAcceptable(text()))
        return {};
    bool isNumber = false;
    (void)text().toDouble(&isNumber);
    const QString ignored = QStringLiteral(" Значение не будет записано.");
    if (!isNumber || !m_editBox->GetUseLimits())
        return QStringLiteral("Ввод не закончен.") + ignored;
    return QStringLiteral("Допустимо от %1 до %2.")
               .arg(numberText(m_editBox->GetMinimum()), numberText(m_editBox->GetMaximum())) +
           ignored;
}

bool qwidgetEditBox::ask(const std::function<bool()> &dialog)
{
    const QPointer<qwidgetEditBox> alive(this);
    m_isDialogOpen = true;
    const bool answer = dialog();
    if (alive)
        m_isDialogOpen = false;
    return answer && alive;
}

bool qwidgetEditBox::setValue()
{
    if (!m_editBox)
        return false; // it went while the operator was being asked
    const Nodes::SignalValue value =
        m_isRestoring ? m_previousValue : convertValue(m_pending, m_editBox->GetValueType());
    const Nodes::Result result = m_editBox->WriteValue(value);
    if (result) {
        m_previousValue = value;
        ValueWriter::runAfterWrite(*this, *m_editBox);
        return true;
    }
    m_pending.clear(); // nothing behind the message looks as if it were written
    {
        const QSignalBlocker blocker(this);
        clear();
    }
    update();
    return ask([&result] {
        ValueWriter::report(result);
        return false;
    });
}

void qwidgetEditBox::beginEditing()
{
    m_isIdle = false;
    m_isEditing = true;
    m_isUnfinished = true;
    m_previous = m_pending;
    m_previousValue = m_editBox->GetValue();
    setReadOnly(false);
    const QSignalBlocker blocker(this);
    setText(m_pending);
    updateButtons();
}

void qwidgetEditBox::closeEditing()
{
    m_isEditing = false;
    m_isIdle = true;
    setReadOnly(true);
    setCursor(Qt::IBeamCursor);
    updateButtons();
    update();
}

void qwidgetEditBox::cancelEditing()
{
    if (!m_isUnfinished)
        return;
    m_isUnfinished = false;
    m_pending = m_previous;
    {
        const QSignalBlocker blocker(this);
        clear();
    }
    closeEditing();
}

void qwidgetEditBox::mousePressEvent(QMouseEvent *event)
{
    if (WindowManager::GetWorkMode() != Nodes::WorkModeRuntime) {
        event->ignore();
        return;
    }
    if (!m_editBox || !isInputAllowed() || event->button() != Qt::LeftButton)
        return;
    if (m_opensKeyboard) {
        event->ignore();
        {
            const QSignalBlocker blocker(this);
            setText(m_pending);
        }
        m_previous = m_pending;
        onBtnKeyboardClicked();
        return;
    }
    if (!m_isUnfinished)
        beginEditing();
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
    const int cursor = cursorPosition();
    setText(m_pending);
    setCursorPosition(cursor);
    update();
}

void qwidgetEditBox::keyPressEvent(QKeyEvent *event)
{
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

// Qt tells the end of an edit also on leaving a box that is not being edited.
void qwidgetEditBox::onEditingFinished()
{
    if (!m_isUnfinished)
        return;
    m_isUnfinished = false;
    const QString typed = text();
    {
        const QSignalBlocker blocker(this);
        clear();
    }
    const QPointer<qwidgetEditBox> alive(this);
    bool isWanted = m_editBox && isAcceptable(typed);
    if (m_isRestoring && m_previousValue.GetQuality() == Nodes::Quality::Bad)
        isWanted = false; // there was no value to write again
    if (isWanted && m_editBox->isConfirmed())
        isWanted = ask([&typed] { return ValueWriter::confirm(typed); });
    if (alive && isWanted) {
        m_pending = typed;
        isWanted = setValue();
    }
    if (!alive)
        return;
    if (!isWanted)
        m_pending = m_previous;
    update();
}

// In a scene the focus may have nowhere to go, and then nobody tells that it was sent on.
void qwidgetEditBox::moveOn(const QKeyEvent &event)
{
    if (event.key() != Qt::Key_Tab && event.key() != Qt::Key_Backtab)
        return;
    if (text() == m_previous)
        cancelEditing();
    else
        finishBy(false);
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
    const bool isWritten = setValue();
    if (!alive)
        return;
    if (isWritten)
        m_previous = wanted;
    else if (m_isEditing)
        setText(m_previous);
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

bool qwidgetEditBox::askText(QString &text)
{
    VirtualKeyboard keyboard(QApplication::activeWindow());
    keyboard.configure(text, std::numeric_limits<int>::max(), false);
    const bool isAccepted = keyboard.exec() == QDialog::Accepted;
    if (isAccepted)
        text = keyboard.getData();
    return isAccepted;
}

bool qwidgetEditBox::askNumber(QString &text)
{
    VirtualNumpad numpad(QApplication::activeWindow());
    numpad.setValidator(m_validator.get());
    if (!text.isEmpty())
        numpad.setValue(text.toDouble());
    // Six digits may be another number, an exponent none that the pad takes.
    if (numpad.getValue() != text.toDouble() || numpad.text().contains(QLatin1Char('e')))
        numpad.setText(text);
    const QString offered = numpad.text();
    const bool isAccepted = numpad.exec() == QDialog::Accepted;
    if (isAccepted && numpad.text() != offered)
        text = numpad.text();
    return isAccepted;
}

void qwidgetEditBox::onBtnKeyboardClicked()
{
    if (!m_editBox || m_isDialogOpen ||
        m_editBox->GetValueType() == Nodes::enSignalValueType::Result)
        return;
    const QPointer<qwidgetEditBox> alive(this);
    QString entered = text();
    const bool isText = m_editBox->GetValueType() == Nodes::enSignalValueType::String;
    const bool isAccepted = ask([&] { return isText ? askText(entered) : askNumber(entered); });
    if (!alive)
        return;
    m_isUnfinished = true;
    // A number left as it was shown would be written again rounded.
    if (!isAccepted || (!isText && entered == m_previous)) {
        cancelEditing();
        return;
    }
    setText(entered);
    finishBy(false);
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
    if (event->type() == QEvent::MouseButtonPress && !m_isIdle && !m_isDialogOpen &&
        !isHit(static_cast<QMouseEvent *>(event)->globalPos()))
        cancelEditing();
    return QLineEdit::eventFilter(watched, event);
}

// Moving on by the keyboard finishes the edit; one that loses the operator's attention in any other
// way writes nothing.
void qwidgetEditBox::focusOutEvent(QFocusEvent *event)
{
    const Qt::FocusReason reason = event->reason();
    const bool isFinished =
        (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) && !m_isDialogOpen;
    if (isOverButton() && !isFinished)
        return;
    if (!isFinished && !m_isDialogOpen && reason != Qt::PopupFocusReason)
        cancelEditing();
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
