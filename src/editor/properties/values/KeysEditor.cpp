#include "editor/properties/values/KeysEditor.h"

#include "editor/properties/values/KeysWindow.h"

#include "nodes/model/properties/PropertyDescriptor.h"

#include <QKeySequence>
#include <QLineEdit>
#include <QToolButton>

namespace Editor {

KeysEditor::KeysEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_line(new QLineEdit(this))
{
    m_line->setFrame(false);
    m_line->setPlaceholderText(QStringLiteral("F5, Ctrl+P"));
    setMain(m_line);
    QToolButton *button =
        addButton(QStringLiteral("…"), QStringLiteral("Нажать клавиши (Alt+Вниз)"));
    button->setShortcut(QKeySequence(Qt::ALT + Qt::Key_Down));
    connect(button, &QToolButton::clicked, this, &KeysEditor::openWindow);
    connect(m_line, &QLineEdit::textEdited, this, [this] {
        touch();
        check();
    });
}

KeysEditor::~KeysEditor() = default;

void KeysEditor::setText(const QString &text)
{
    m_line->setText(text);
}

QString KeysEditor::text() const
{
    return m_line->text();
}

void KeysEditor::check()
{
    const QString written = m_line->text();
    const auto keys = QKeySequence::fromString(written, QKeySequence::PortableText);
    bool isKnown = !keys.isEmpty();
    for (int i = 0; i < keys.count(); ++i)
        isKnown = isKnown && (keys[uint(i)] & ~Qt::KeyboardModifierMask) != Qt::Key_unknown;
    showRemark(written.isEmpty() || isKnown
                   ? QString()
                   : QStringLiteral("Такой клавиши нет. Например: F5, Ctrl+P, Esc"));
}

void KeysEditor::openWindow()
{
    auto *window = new KeysWindow(this);
    window->setWindowTitle(QString::fromStdString(descriptor().nameRu));
    connect(window, &KeysWindow::accepted, this, [this, window] {
        setText(window->keys());
        finish();
    });
    window->open();
}

} // namespace Editor
