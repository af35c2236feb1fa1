#include "editor/properties/texts/ExpressionEditor.h"

#include "editor/properties/texts/ExpressionWindow.h"
#include "editor/properties/texts/WordCompleter.h"

#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/texts/TextLanguage.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>

namespace Editor {

ExpressionEditor::ExpressionEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent),
      m_language(*Nodes::FindTextLanguage(descriptor().editorHint)),
      m_line(new QLineEdit(this))
{
    m_line->setFrame(false);
    setMain(m_line);
    QToolButton *button =
        addButton(QStringLiteral("…"), QStringLiteral("Открыть окно с подсказкой (Alt+Вниз)"));
    button->setShortcut(QKeySequence(Qt::ALT + Qt::Key_Down));
    connect(button, &QToolButton::clicked, this, &ExpressionEditor::openWindow);
    connect(m_line, &QLineEdit::textEdited, this, [this](const QString &text) {
        m_text = text;
        touch();
        check();
        offer(false);
    });
    auto *ask = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_Space), m_line);
    ask->setContext(Qt::WidgetShortcut);
    connect(ask, &QShortcut::activated, this, [this] { offer(true); });
}

ExpressionEditor::~ExpressionEditor() = default;

void ExpressionEditor::setText(const QString &text)
{
    m_text = text;
    const bool isOneLine = !text.contains(QLatin1Char('\n'));
    m_line->setText(isOneLine ? text
                              : text.section(QLatin1Char('\n'), 0, 0) + QStringLiteral(" …"));
    m_line->setReadOnly(!isOneLine);
}

QString ExpressionEditor::text() const
{
    return m_text;
}

WordCompleter *ExpressionEditor::completer()
{
    if (!m_completer) {
        m_completer = new WordCompleter(m_language, context().node.GetNode(), this);
        m_completer->setWidget(m_line);
        connect(m_completer, QOverload<const QString &>::of(&QCompleter::activated), this,
                &ExpressionEditor::insertWord);
    }
    return m_completer;
}

void ExpressionEditor::offer(bool isAsked)
{
    if (!m_line->isReadOnly())
        completer()->offer(m_line->text(), m_line->cursorPosition(), m_line->rect(), isAsked);
}

void ExpressionEditor::insertWord(const QString &word)
{
    const QString text = m_line->text();
    const int end = m_line->cursorPosition();
    const int begin = completer()->wordBegin(text, end);
    const bool isClosed =
        end < text.size() && text.at(end) == word.back() && !word.back().isLetterOrNumber();
    m_line->setSelection(begin, end - begin + (isClosed ? 1 : 0));
    m_line->insert(word);
    m_text = m_line->text();
    touch();
    check();
    completer()->popup()->hide();
}

void ExpressionEditor::check()
{
    const auto problems = m_language.check(m_text.toStdString(), context().node.GetNode());
    showRemark(problems.empty() ? QString() : QString::fromStdString(problems.front().message));
}

void ExpressionEditor::openWindow()
{
    auto *window = new ExpressionWindow(m_language, context().node, this);
    window->setWindowTitle(QString::fromStdString(descriptor().nameRu));
    window->setText(m_text);
    connect(window, &ExpressionWindow::accepted, this,
            [this, window] { takeText(window->text()); });
    window->open();
}

} // namespace Editor
