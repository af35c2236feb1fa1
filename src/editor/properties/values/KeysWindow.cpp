#include "editor/properties/values/KeysWindow.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace Editor {

namespace {

bool isModifier(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_CapsLock ||
           key == Qt::Key_NumLock || key == Qt::Key_unknown;
}

} // namespace

KeysWindow::KeysWindow(QWidget *parent) : QDialog(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    auto *told =
        new QLabel(QStringLiteral("Нажмите клавишу или сочетание, например F5 или Ctrl+P."), this);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *cancel =
        buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    cancel->setFocusPolicy(Qt::NoFocus); // it would take the keys
    cancel->setAutoDefault(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(told);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    setFocusPolicy(Qt::StrongFocus);
    setFocus();
}

KeysWindow::~KeysWindow() = default;

bool KeysWindow::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept(); // no shortcut runs while one is being chosen
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return QDialog::event(event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (isModifier(key->key()))
        return true;
    const int modifiers = int(key->modifiers() & ~Qt::KeypadModifier);
    m_keys = QKeySequence(modifiers | key->key()).toString(QKeySequence::PortableText);
    accept();
    return true;
}

} // namespace Editor
