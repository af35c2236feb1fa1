#include "editor/help/DocumentsWindow.h"

#include "editor/workspace/KeyboardAccess.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

namespace {

constexpr int FileRole = Qt::UserRole;
const QColor foundMark(0xff, 0xe0, 0x82);

/// A heading as links name it.
QString slugOf(const QString &heading)
{
    static const QRegularExpression unfit(QStringLiteral("[^\\w -]"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    return heading.toLower().remove(unfit).replace(QLatin1Char(' '), QLatin1Char('-'));
}

QString titleOf(const QString &text, const QString &file)
{
    const QString first = text.section(QLatin1Char('\n'), 0, 0);
    static const QRegularExpression folder(QStringLiteral(" \\(`.*\\)$"));
    return first.startsWith(QLatin1String("# ")) ? first.mid(2).remove(folder) : file;
}

QStringList wordsOf(const QString &text)
{
    return text.toCaseFolded().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

DocumentsWindow::DocumentsWindow(const QString &directory, QWidget *parent)
    : QDialog(parent),
      m_directory(directory),
      m_search(new QLineEdit(this)),
      m_list(new QListWidget(this)),
      m_text(new QTextBrowser(this)),
      m_back(new QPushButton(tr("Назад"), this)),
      m_forward(new QPushButton(tr("Вперёд"), this)),
      m_told(new QLabel(this))
{
    setWindowTitle(tr("Документация"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    KeyboardAccess::makeSearchLine(*m_search, tr("Поиск в документации"));
    m_list->setAccessibleName(tr("Документы"));
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // what is cut has a tip
    m_text->setAccessibleName(tr("Документ"));
    m_text->setOpenLinks(false);
    m_text->setSearchPaths({directory});
    m_text->document()->setDocumentMargin(16);
    auto *bar = new QHBoxLayout;
    bar->addWidget(m_search, 1);
    for (QPushButton *button : {m_back, m_forward}) {
        button->setAutoDefault(false);
        bar->addWidget(button);
    }
    auto *parts = new QSplitter(this);
    parts->addWidget(m_list);
    parts->addWidget(m_text);
    parts->setSizes({220, 680});
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(parts, 1);
    layout->addWidget(m_told);
    KeyboardAccess::followLayouts(*this);
    m_back->setShortcut(QKeySequence::Back);
    m_forward->setShortcut(QKeySequence::Forward);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search,
            [this] { m_search->setFocus(Qt::ShortcutFocusReason); });
    connect(m_back, &QPushButton::clicked, m_text, &QTextBrowser::backward);
    connect(m_forward, &QPushButton::clicked, m_text, &QTextBrowser::forward);
    connect(m_text, &QTextBrowser::backwardAvailable, m_back, &QWidget::setEnabled);
    connect(m_text, &QTextBrowser::forwardAvailable, m_forward, &QWidget::setEnabled);
    connect(m_text, &QTextBrowser::anchorClicked, this, &DocumentsWindow::goTo);
    connect(m_text, &QTextBrowser::sourceChanged, this, &DocumentsWindow::showPlace);
    connect(m_search, &QLineEdit::textChanged, this, &DocumentsWindow::search);
    connect(m_list, &QListWidget::currentItemChanged, this, [this](QListWidgetItem *row) {
        if (row)
            open(row->data(FileRole).toString());
    });
    m_back->setEnabled(false);
    m_forward->setEnabled(false);
    resize(960, 680);
    read(directory);
}

void DocumentsWindow::read(const QString &directory)
{
    const QFileInfoList files =
        QDir(directory).entryInfoList({QStringLiteral("*.md")}, QDir::Files);
    for (const QFileInfo &info : files) {
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly))
            continue; // the others are there all the same
        const QString text = QString::fromUtf8(file.readAll());
        auto *row = new QListWidgetItem(titleOf(text, info.fileName()), m_list);
        row->setData(FileRole, info.fileName());
        row->setToolTip(row->text() + QStringLiteral(" — ") + info.fileName());
        m_documents.append({info.fileName(), text.toCaseFolded(), row});
    }
    m_list->sortItems();
}

bool DocumentsWindow::open(const QString &document)
{
    const QString file = document.section(QLatin1Char('#'), 0, 0);
    const auto found = std::find_if(m_documents.begin(), m_documents.end(),
                                    [&file](const Document &known) { return known.file == file; });
    if (found == m_documents.end()) {
        m_told->setText(tr("Такого документа нет: %1").arg(document));
        return false;
    }
    m_told->clear();
    if (m_text->source().fileName() != file)
        m_text->setSource(QUrl::fromLocalFile(m_directory + QLatin1Char('/') + file),
                          QTextDocument::MarkdownResource);
    if (document.contains(QLatin1Char('#')))
        goToHeading(document.section(QLatin1Char('#'), 1));
    return true;
}

void DocumentsWindow::goTo(const QUrl &link)
{
    if (link.isRelative() || link.isLocalFile())
        open((link.fileName().isEmpty() ? m_text->source().fileName() : link.fileName()) +
             (link.hasFragment() ? QLatin1Char('#') + link.fragment() : QString()));
    else
        m_told->setText(tr("Ссылка ведёт в сеть: %1").arg(link.toString()));
}

void DocumentsWindow::goToHeading(const QString &slug)
{
    for (QTextBlock block = m_text->document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || slugOf(block.text()) != slug)
            continue;
        QTextCursor end(m_text->document());
        end.movePosition(QTextCursor::End);
        m_text->setTextCursor(end); // so that the heading comes to the top
        m_text->setTextCursor(QTextCursor(block));
        return;
    }
}

void DocumentsWindow::showPlace(const QUrl &source)
{
    const QString file = source.fileName();
    for (const Document &document : qAsConst(m_documents)) {
        const QSignalBlocker quiet(m_list);
        if (document.file == file)
            m_list->setCurrentItem(document.row);
    }
    markFound();
}

void DocumentsWindow::search(const QString &words)
{
    const QStringList wanted = wordsOf(words);
    int count = 0;
    for (const Document &document : qAsConst(m_documents)) {
        const bool isFound =
            std::all_of(wanted.begin(), wanted.end(), [&document](const QString &word) {
                return document.folded.contains(word);
            });
        document.row->setHidden(!isFound);
        count += isFound ? 1 : 0;
    }
    m_told->setText(wanted.isEmpty() ? QString() : tr("Найдено в документах: %1").arg(count));
    markFound();
}

void DocumentsWindow::markFound()
{
    QList<QTextEdit::ExtraSelection> marks;
    const QStringList words = wordsOf(m_search->text());
    for (const QString &word : words) {
        QTextCursor at = m_text->document()->find(word, 0);
        for (; !at.isNull(); at = m_text->document()->find(word, at)) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = at;
            mark.format.setBackground(foundMark);
            marks.append(mark);
        }
    }
    m_text->setExtraSelections(marks);
    if (!marks.isEmpty()) {
        QTextCursor first = marks.first().cursor;
        first.clearSelection();
        m_text->setTextCursor(first);
    }
}

} // namespace Editor
