#include "editor/properties/values/SecretEditor.h"

#include "editor/properties/values/SecretWindow.h"

#include <QLineEdit>
#include <QToolButton>

namespace Editor {

SecretEditor::SecretEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_line(new QLineEdit(this))
{
    m_line->setReadOnly(true);
    m_line->setFrame(false);
    setMain(m_line);
    QToolButton *set = addButton(QStringLiteral("…"), QStringLiteral("Задать пароль (Alt+Вниз)"));
    set->setShortcut(QKeySequence(Qt::ALT + Qt::Key_Down));
    connect(set, &QToolButton::clicked, this, &SecretEditor::change);
    QToolButton *clear = addButton(QStringLiteral("×"), QStringLiteral("Убрать пароль"));
    connect(clear, &QToolButton::clicked, this, [this] {
        setText(QString());
        finish();
    });
}

SecretEditor::~SecretEditor() = default;

void SecretEditor::setText(const QString &text)
{
    m_text = text;
    m_line->setText(text.isEmpty() ? QStringLiteral("не задан") : QStringLiteral("задан"));
}

QString SecretEditor::text() const
{
    return m_text;
}

void SecretEditor::change()
{
    auto *window = new SecretWindow(this);
    connect(window, &SecretWindow::accepted, this, [this, window] {
        setText(window->hash());
        finish();
    });
    window->open();
}

} // namespace Editor
