// The dialogs of an edit: on-screen keyboards and the question before writing.
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/dialogs/VirtualKeyboard.h"
#include "widgets/dialogs/VirtualNumpad.h"
#include "widgets/elements/input/ValueWriter.h"
#include "widgets/elements/qwidgetEditBox.h"

#include "nodes/visual/elements/widgetEditBox.h"

#include <QApplication>

#include <limits>
#include <utility>

namespace Widgets {

namespace {

/// On the active window, which may close and take the dialog along.
DialogRequest requestFor(const QWidget &element)
{
    DialogRequest request;
    request.parent = QApplication::activeWindow();
    request.element = &element;
    return request;
}

} // namespace

bool qwidgetEditBox::ask(QDialog &dialog, int accepted)
{
    const QPointer<qwidgetEditBox> alive(this);
    m_isDialogOpen = true;
    m_dialog = &dialog;
    m_abandoned.clear();
    restartLimit();
    const bool answer = dialog.exec() == accepted;
    if (!alive)
        return false;
    m_isDialogOpen = false;
    m_dialog = nullptr;
    if (!m_isEditing)
        m_limit.stop();
    if (!m_abandoned.isEmpty())
        tell(QStringLiteral("Ввод отменён. ") + m_abandoned);
    return answer && m_abandoned.isEmpty();
}

bool qwidgetEditBox::confirmed(const QString &typed)
{
    const auto question = ValueWriter::question(typed, *this);
    return ask(*question, QMessageBox::Ok);
}

bool qwidgetEditBox::askText(QString &text)
{
    const OwnedDialog<VirtualKeyboard> keyboard(requestFor(*this));
    keyboard->configure(text, std::numeric_limits<int>::max(), false);
    keyboard->showCurrent(shownText());
    connect(this, &qwidgetEditBox::shownTextChanged, &*keyboard, &VirtualKeyboard::showCurrent);
    const bool isAccepted = ask(*keyboard, QDialog::Accepted) && keyboard;
    if (isAccepted)
        text = keyboard->getData();
    return isAccepted;
}

bool qwidgetEditBox::askNumber(QString &text)
{
    const OwnedDialog<VirtualNumpad> numpad(requestFor(*this));
    numpad->setValidator(m_validator.get());
    if (!text.isEmpty())
        numpad->setValue(text.toDouble());
    // Six digits may be another number, an exponent none that the pad takes.
    if (numpad->getValue() != text.toDouble() || numpad->text().contains(QLatin1Char('e')))
        numpad->setText(text);
    numpad->showCurrent(shownText());
    connect(this, &qwidgetEditBox::shownTextChanged, &*numpad, &VirtualNumpad::showCurrent);
    connect(&*numpad, &VirtualNumpad::inputRejected, this, [this, pad = &*numpad] {
        pad->showHint(undoneReason(pad->text() + QLatin1Char('0')));
    });
    const QString offered = numpad->text();
    const bool isAccepted = ask(*numpad, QDialog::Accepted) && numpad;
    if (isAccepted && numpad->text() != offered)
        text = numpad->text();
    return isAccepted;
}

void qwidgetEditBox::onBtnKeyboardClicked()
{
    if (!m_editBox || m_isDialogOpen ||
        m_editBox->GetValueType() == Nodes::enSignalValueType::Result)
        return;
    const QPointer<qwidgetEditBox> alive(this);
    QString entered = m_isEditing ? text() : m_pending;
    const bool isText = m_editBox->GetValueType() == Nodes::enSignalValueType::String;
    const bool isAccepted = isText ? askText(entered) : askNumber(entered);
    if (!alive)
        return;
    m_isUnfinished = true;
    // A number left as it was shown would be written again rounded.
    if (!isAccepted || (!isText && entered == m_startText)) {
        cancelEditing(QString());
        return;
    }
    setText(entered);
    finishBy(false);
}

} // namespace Widgets
