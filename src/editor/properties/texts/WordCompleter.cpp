#include "editor/properties/texts/WordCompleter.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>

#include <algorithm>

namespace Editor {

namespace {

constexpr int listWidth = 440;
constexpr int widestWord = 260; // meanings stay in sight beside long paths
constexpr int mostRows = 12;
constexpr int leastWritten = 2; // characters before words are offered unasked

bool isOfWord(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

// The quote that is open before the cursor; -1 when none is.
int openQuote(const QString &text, int cursor)
{
    int quote = -1;
    for (int i = 0; i < cursor; ++i) {
        const QChar c = text.at(i);
        if (quote >= 0 && (c == text.at(quote) || c == QLatin1Char('\n')))
            quote = -1;
        else if (quote < 0 && (c == QLatin1Char('"') || c == QLatin1Char('\'')))
            quote = i;
    }
    return quote;
}

QString withoutMarks(QString word)
{
    while (!word.isEmpty() && QStringLiteral("\"'{$%").contains(word.at(0)))
        word.remove(0, 1);
    return word;
}

} // namespace

WordCompleter::WordCompleter(const Nodes::TextLanguage &language, const Nodes::ConfigNode *node,
                             QObject *parent)
    : QCompleter(parent), m_language(language), m_words(new QStandardItemModel(this))
{
    for (const Nodes::TextWord &word : language.words(node)) {
        auto *text = new QStandardItem(QString::fromStdString(word.text));
        auto *meaning = new QStandardItem(QString::fromStdString(word.meaning));
        for (QStandardItem *item : {text, meaning}) {
            item->setEditable(false);
            item->setToolTip(meaning->text());
        }
        m_words->appendRow({text, meaning});
    }
    setModel(m_words);
    setCaseSensitivity(Qt::CaseInsensitive);
    setFilterMode(Qt::MatchContains);
    setMaxVisibleItems(mostRows);
    auto *list = new QTreeView;
    list->setRootIsDecorated(false);
    list->setHeaderHidden(true);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setUniformRowHeights(true);
    setPopup(list);
    list->header()->setStretchLastSection(true);
}

WordCompleter::~WordCompleter() = default;

int WordCompleter::wordBegin(const QString &text, int cursor) const
{
    if (m_language.form == Nodes::TextLanguage::Lua) {
        const int quote = openQuote(text, cursor);
        if (quote >= 0)
            return quote;
    }
    int begin = cursor;
    if (m_language.form == Nodes::TextLanguage::Braces) {
        const int brace = cursor > 0 ? text.lastIndexOf(QLatin1Char('{'), cursor - 1) : -1;
        const bool isOpen = brace >= 0 && !text.mid(brace, cursor - brace).contains('}');
        if (isOpen)
            return brace > 0 && text.at(brace - 1) == QLatin1Char('$') ? brace - 1 : brace;
        return cursor > 0 && text.at(cursor - 1) == QLatin1Char('$') ? cursor - 1 : cursor;
    }
    while (begin > 0 && isOfWord(text.at(begin - 1)))
        --begin;
    const bool isFormat = m_language.form == Nodes::TextLanguage::NumberFormat;
    while (isFormat && begin > 0 && QStringLiteral("%.+").contains(text.at(begin - 1)))
        --begin;
    return begin;
}

void WordCompleter::offer(const QString &text, int cursor, const QRect &at, bool isAsked)
{
    const int begin = wordBegin(text, cursor);
    const QString written = text.mid(begin, cursor - begin);
    const QString sought = withoutMarks(written);
    const bool isMarked = written.size() > sought.size();
    if (!isAsked && !isMarked && sought.size() < leastWritten)
        return popup()->hide();
    setCompletionPrefix(sought);
    // Enter behind a word that is written out means a new line, not the first word of a list.
    const bool isWhole = !m_words->findItems(written, Qt::MatchExactly).isEmpty();
    if (completionCount() == 0 || (isWhole && !isAsked))
        return popup()->hide();
    popup()->setCurrentIndex(completionModel()->index(0, 0));
    auto *list = static_cast<QTreeView *>(popup());
    list->resizeColumnToContents(0);
    list->header()->resizeSection(0, std::min(list->header()->sectionSize(0), widestWord));
    QRect place = at;
    place.setWidth(listWidth);
    complete(place);
}

} // namespace Editor
