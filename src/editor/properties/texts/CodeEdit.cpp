#include "editor/properties/texts/CodeEdit.h"

#include "editor/properties/texts/BracketPair.h"
#include "editor/properties/texts/CodeHighlighter.h"
#include "editor/properties/texts/TextPlaces.h"
#include "editor/properties/texts/WordCompleter.h"

#include <QAbstractItemView>
#include <QFontDatabase>
#include <QHelpEvent>
#include <QTextBlock>
#include <QToolTip>

namespace Editor {

namespace {

constexpr int indent = 4; // blanks

QTextEdit::ExtraSelection selectionOf(const QPlainTextEdit &edit, int begin, int end)
{
    QTextEdit::ExtraSelection selection;
    selection.cursor = edit.textCursor();
    selection.cursor.setPosition(begin);
    selection.cursor.setPosition(end, QTextCursor::KeepAnchor);
    return selection;
}

// Words behind which a line is written further in.
bool opensBlock(const QString &line)
{
    for (const char *word : {"then", "do", "else", "repeat", "{", "("}) {
        if (line.trimmed().endsWith(QLatin1String(word)))
            return true;
    }
    return line.contains(QLatin1String("function")) && line.trimmed().endsWith(QLatin1Char(')'));
}

} // namespace

CodeEdit::CodeEdit(const Nodes::TextLanguage &language, const Nodes::NodeLink &node,
                   QWidget *parent)
    : QPlainTextEdit(parent),
      m_language(language),
      m_node(node),
      m_completer(new WordCompleter(language, node.GetNode(), this))
{
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setLineWrapMode(language.form == Nodes::TextLanguage::Lua ? NoWrap : WidgetWidth);
    setTabStopDistance(indent * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    setTabChangesFocus(!language.isMultiLine);
    if (language.form == Nodes::TextLanguage::Lua)
        new CodeHighlighter(document());
    m_completer->setWidget(this);
    connect(m_completer, QOverload<const QString &>::of(&QCompleter::activated), this,
            &CodeEdit::insertWord);
    connect(this, &QPlainTextEdit::textChanged, this, &CodeEdit::check);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &CodeEdit::mark);
}

CodeEdit::~CodeEdit() = default;

void CodeEdit::check()
{
    m_problems = m_language.check(toPlainText().toStdString(), m_node.GetNode());
    mark();
    emit checked();
}

void CodeEdit::mark()
{
    QList<QTextEdit::ExtraSelection> marks;
    const std::string text = toPlainText().toStdString();
    const int size = document()->characterCount() - 1;
    for (const Nodes::TextProblem &problem : m_problems) {
        int begin = characterAt(text, problem.begin);
        const int end = characterAt(text, problem.begin + problem.length);
        if (problem.length == 0)
            begin = std::max(0, size - 1); // at the end there is nothing to mark
        QTextEdit::ExtraSelection mark = selectionOf(*this, begin, std::max(end, begin));
        mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.format.setUnderlineColor(problem.isRemark ? QColor(0x9a, 0x62, 0x00)
                                                       : QColor(0xc4, 0x28, 0x1c));
        marks << mark;
    }
    addBrackets(marks);
    setExtraSelections(marks);
}

void CodeEdit::addBrackets(QList<QTextEdit::ExtraSelection> &marks) const
{
    const auto pair = bracketPair(toPlainText(), textCursor().position(),
                                  m_language.form == Nodes::TextLanguage::Lua);
    if (!pair)
        return;
    const bool isAlone = pair->first == pair->second;
    for (const int at : {pair->first, pair->second}) {
        QTextEdit::ExtraSelection mark = selectionOf(*this, at, at + 1);
        mark.format.setBackground(isAlone ? QColor(0xfd, 0xd9, 0xd5) : QColor(0xcf, 0xdf, 0xf2));
        mark.format.setFontWeight(QFont::Bold);
        marks << mark;
    }
}

QString CodeEdit::placeOf(const Nodes::TextProblem &problem) const
{
    const QTextBlock block =
        document()->findBlock(characterAt(toPlainText().toStdString(), problem.begin));
    const int sign = 1 + characterAt(toPlainText().toStdString(), problem.begin) - block.position();
    return document()->blockCount() > 1
               ? QStringLiteral("строка %1, знак %2").arg(block.blockNumber() + 1).arg(sign)
               : QStringLiteral("знак %1").arg(sign);
}

void CodeEdit::goTo(const Nodes::TextProblem &problem)
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(characterAt(toPlainText().toStdString(), problem.begin));
    setTextCursor(cursor);
    setFocus();
}

void CodeEdit::insertWord(const QString &word)
{
    QTextCursor cursor = textCursor();
    const QString text = toPlainText();
    const int end = cursor.position();
    const int begin = m_completer->wordBegin(text, end);
    // The mark that closes the word may be there already.
    const bool isClosed =
        end < text.size() && text.at(end) == word.back() && !word.back().isLetterOrNumber();
    cursor.setPosition(begin);
    cursor.setPosition(isClosed ? end + 1 : end, QTextCursor::KeepAnchor);
    cursor.insertText(word);
    setTextCursor(cursor);
    m_completer->popup()->hide();
}

void CodeEdit::offer(bool isAsked)
{
    m_completer->offer(toPlainText(), textCursor().position(), cursorRect(), isAsked);
}

// The list has the keyboard while it is open; these keys are its own.
bool CodeEdit::keyForList(QKeyEvent *event)
{
    if (!m_completer->popup()->isVisible())
        return false;
    switch (event->key()) {
    case Qt::Key_Enter:
    case Qt::Key_Return:
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        event->ignore();
        return true;
    default:
        return false;
    }
}

void CodeEdit::newLine()
{
    const QString line = textCursor().block().text().left(textCursor().positionInBlock());
    int blanks = 0;
    while (blanks < line.size() && line.at(blanks).isSpace())
        ++blanks;
    const QString deeper = opensBlock(line) ? QString(indent, QLatin1Char(' ')) : QString();
    insertPlainText(QLatin1Char('\n') + line.left(blanks) + deeper);
    ensureCursorVisible();
}

void CodeEdit::keyPressEvent(QKeyEvent *event)
{
    if (keyForList(event))
        return;
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isCommand = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier)
        return offer(true);
    if (isEnter && (isCommand || !m_language.isMultiLine))
        return emit taken();
    if (isEnter)
        return newLine();
    if (event->key() == Qt::Key_Tab && m_language.isMultiLine && !textCursor().hasSelection())
        return insertPlainText(QString(indent, QLatin1Char(' ')));
    QPlainTextEdit::keyPressEvent(event);
    const bool isErasing = event->key() == Qt::Key_Backspace;
    if ((!event->text().isEmpty() && !isCommand && event->text().at(0).isPrint()) || isErasing)
        offer(false);
}

bool CodeEdit::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QPlainTextEdit::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const int at = cursorForPosition(viewport()->mapFrom(this, help->pos())).position();
    const std::string text = toPlainText().toStdString();
    for (const Nodes::TextProblem &problem : m_problems) {
        if (at >= characterAt(text, problem.begin) &&
            at <= characterAt(text, problem.begin + problem.length)) {
            QToolTip::showText(help->globalPos(), QString::fromStdString(problem.message), this);
            return true;
        }
    }
    QToolTip::hideText();
    return true;
}

} // namespace Editor
