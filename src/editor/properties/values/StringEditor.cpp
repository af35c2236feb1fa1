#include "editor/properties/values/StringEditor.h"

#include "editor/properties/values/TextWindow.h"

#include "nodes/model/properties/PropertyDescriptor.h"

#include <QLineEdit>
#include <QToolButton>

namespace Editor {

StringEditor::StringEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_line(new QLineEdit(this))
{
    m_line->setFrame(false);
    setMain(m_line);
    connect(m_line, &QLineEdit::textEdited, this, [this](const QString &text) {
        m_text = text;
        touch();
    });
    m_button = addButton(QStringLiteral("…"), QStringLiteral("Несколько строк (Alt+Вниз)"));
    m_button->setShortcut(QKeySequence(Qt::ALT + Qt::Key_Down));
    m_button->setVisible(isMultiLine());
    connect(m_button, &QToolButton::clicked, this, &StringEditor::openWindow);
}

StringEditor::~StringEditor() = default;

bool StringEditor::isMultiLine() const
{
    return !context().descriptor || context().descriptor->editorHint == "multiline" ||
           m_text.contains(QLatin1Char('\n'));
}

void StringEditor::setText(const QString &text)
{
    m_text = text;
    const bool isOneLine = !text.contains(QLatin1Char('\n'));
    m_line->setText(isOneLine ? text
                              : text.section(QLatin1Char('\n'), 0, 0) + QStringLiteral(" …"));
    m_line->setReadOnly(!isOneLine);
    m_button->setVisible(isMultiLine());
}

QString StringEditor::text() const
{
    return m_text;
}

void StringEditor::openWindow()
{
    const Nodes::PropertyDescriptor *d = context().descriptor;
    auto *window = new TextWindow(this);
    window->setWindowTitle(d ? QString::fromStdString(d->nameRu) : QStringLiteral("Описание"));
    window->setText(m_text);
    connect(window, &TextWindow::accepted, this, [this, window] { takeText(window->text()); });
    window->open();
}

} // namespace Editor
