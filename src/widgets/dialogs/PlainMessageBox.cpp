#include "widgets/dialogs/PlainMessageBox.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"

#include <QAbstractButton>

namespace Widgets {

PlainMessageBox::PlainMessageBox(QWidget *parent)
    : QMessageBox(parent), DialogManners(static_cast<QWidget &>(*this))
{
    ApplyDialogLook(*this);
    MakeLegible(*this);
    setTextFormat(Qt::PlainText);
}

PlainMessageBox::PlainMessageBox(Icon icon, const QString &title, const QString &text,
                                 StandardButtons buttons, QWidget *parent)
    : PlainMessageBox(parent)
{
    fill(icon, title, text, buttons);
}

void PlainMessageBox::fill(Icon icon, const QString &title, const QString &text,
                           StandardButtons buttons)
{
    setIcon(icon);
    setWindowTitle(title);
    setText(text);
    setStandardButtons(buttons);
}

void PlainMessageBox::tell(Icon icon, const QString &title, const QString &text, QWidget *parent)
{
    DialogRequest request;
    request.parent = parent;
    auto *box = Dialogs::make<PlainMessageBox>(request);
    box->fill(icon, title, text, Ok);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

QMessageBox::StandardButton PlainMessageBox::ask(Icon icon, const QString &title,
                                                 const QString &text, StandardButtons buttons,
                                                 QWidget *parent, StandardButton preset)
{
    DialogRequest request;
    request.parent = parent;
    const OwnedDialog<PlainMessageBox> box(request);
    box->fill(icon, title, text, buttons);
    box->setDefaultButton(preset);
    return StandardButton(box->exec());
}

void PlainMessageBox::setQuestion(const QString &title, const QString &text, const QString &yes)
{
    fill(Question, title, text, Ok | Cancel);
    button(Ok)->setText(yes);
    button(Cancel)->setText(QStringLiteral("Отмена"));
    setDefaultButton(Cancel);
}

void PlainMessageBox::askFor(std::function<void()> onYes)
{
    setAttribute(Qt::WA_DeleteOnClose);
    connect(this, &QDialog::finished, this, [onYes = std::move(onYes)](int answer) {
        if (answer == Ok || answer == Yes)
            onYes();
    });
    open();
}

// Buttons may have got their texts after the box was made.
void PlainMessageBox::showEvent(QShowEvent *event)
{
    for (QAbstractButton *each : buttons())
        MakeTouchable(*each);
    QMessageBox::showEvent(event);
    settle();
}

} // namespace Widgets
