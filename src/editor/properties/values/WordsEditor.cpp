#include "editor/properties/values/WordsEditor.h"

#include "editor/properties/PropertyTexts.h"
#include "editor/properties/values/WordsWindow.h"

#include "nodes/model/properties/PropertyDescriptor.h"

#include <QLineEdit>
#include <QToolButton>

namespace Editor {

WordsEditor::WordsEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_line(new QLineEdit(this))
{
    m_line->setReadOnly(true);
    m_line->setFrame(false);
    setMain(m_line);
    QToolButton *button =
        addButton(QStringLiteral("…"), QStringLiteral("Выбрать и упорядочить (Alt+Вниз)"));
    button->setShortcut(QKeySequence(Qt::ALT + Qt::Key_Down));
    connect(button, &QToolButton::clicked, this, &WordsEditor::openWindow);
}

WordsEditor::~WordsEditor() = default;

void WordsEditor::setText(const QString &text)
{
    m_text = text;
    m_line->setText(PropertyTexts::shown(descriptor(), text, nullptr));
    m_line->setCursorPosition(0);
}

QString WordsEditor::text() const
{
    return m_text;
}

void WordsEditor::openWindow()
{
    auto *window = new WordsWindow(descriptor().choices, m_text, this);
    window->setWindowTitle(QString::fromStdString(descriptor().nameRu));
    connect(window, &WordsWindow::accepted, this, [this, window] { takeText(window->text()); });
    window->open();
}

} // namespace Editor
