#include "editor/tree/TreeSearch.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace Editor {

namespace {

constexpr char textEnd = '\n';

QByteArray folded(const QString &text)
{
    return text.toCaseFolded().replace(QChar(0x451), QChar(0x435)).toUtf8();
}

/// The second letter of the pair that UTF-8 writes a Cyrillic letter with, and the first, as
/// `folded` has them.
void appendCyrillic(QByteArray &texts, unsigned char lead, unsigned char rest)
{
    if (lead == 0xD0 && rest >= 0x90 && rest <= 0x9F) { // А to П
        rest += 0x20;
    } else if (lead == 0xD0 && rest >= 0xA0 && rest <= 0xAF) { // Р to Я
        lead = 0xD1;
        rest -= 0x20;
    } else if ((lead == 0xD0 && rest == 0x81) || (lead == 0xD1 && rest == 0x91)) { // Ё, ё
        lead = 0xD0;
        rest = 0xB5;
    }
    texts.append(char(lead));
    texts.append(char(rest));
}

/// The same as `folded`, several times faster for what names here are written with.
bool appendRussian(QByteArray &texts, const std::string &text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        const bool isRussian = (c == 0xD0 && (next == 0x81 || next >= 0x90)) ||
                               (c == 0xD1 && (next <= 0x8F || next == 0x91));
        if (c < 0x80) {
            texts.append(c >= 'A' && c <= 'Z' ? char(c + 'a' - 'A') : char(c));
        } else if (isRussian && next >= 0x80) {
            appendCyrillic(texts, c, next);
            ++i;
        } else {
            return false;
        }
    }
    return true;
}

void appendFolded(QByteArray &texts, const std::string &text)
{
    const int begin = texts.size();
    if (!appendRussian(texts, text)) {
        texts.truncate(begin);
        texts.append(folded(QString::fromStdString(text)));
    }
    texts.append(textEnd);
}

bool isPathWord(const QByteArray &word)
{
    return word.contains('/');
}

QList<QByteArray> wordsOf(const QString &text)
{
    QList<QByteArray> words;
    if (text.contains(QLatin1Char('/')))
        return {folded(text.trimmed())}; // names in paths may have blanks
    for (const QString &word : text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts))
        words.append(folded(word));
    return words;
}

/// Id that a word such as "#12" names; 0 for other words.
unsigned long idOf(const QByteArray &word)
{
    bool isNumber = false;
    const unsigned long id = word.startsWith('#') ? word.mid(1).toULong(&isNumber) : 0;
    return isNumber ? id : 0;
}

} // namespace

void TreeSearch::readNode(const Nodes::ConfigNode &node, int parent)
{
    const int own = int(m_entries.size());
    m_entries.push_back({node.GetId(), parent, m_texts.size()});
    appendFolded(m_texts, node.GetName());
    appendFolded(m_texts, node.GetDescription());
    for (const auto &child : node.Children())
        readNode(*child, own);
}

void TreeSearch::read(const Nodes::NodesCollection &project)
{
    if (m_project == &project && m_token == project.GetToken() &&
        m_revision == project.GetRevision())
        return;
    m_project = &project;
    m_token = project.GetToken();
    m_revision = project.GetRevision();
    m_entries.clear();
    m_texts.resize(0); // keeps its memory
    if (project.GetRoot())
        readNode(*project.GetRoot(), -1);
}

QByteArray TreeSearch::textOf(int entry) const
{
    const std::size_t next = std::size_t(entry) + 1;
    const int begin = m_entries[std::size_t(entry)].textBegin;
    const int end = next < m_entries.size() ? m_entries[next].textBegin : m_texts.size();
    return QByteArray::fromRawData(m_texts.constData() + begin, end - begin);
}

QByteArray TreeSearch::pathOf(int entry) const
{
    QByteArray path;
    for (; entry > 0; entry = m_entries[std::size_t(entry)].parent) { // without the root's name
        const QByteArray text = textOf(entry);
        path.prepend(text.left(text.indexOf(textEnd)));
        path.prepend('/');
    }
    return path;
}

bool TreeSearch::matches(int entry, const QByteArray &word) const
{
    if (const unsigned long id = idOf(word))
        return m_entries[std::size_t(entry)].id == id;
    return (isPathWord(word) ? pathOf(entry) : textOf(entry)).contains(word);
}

/// Entries with the first word that stands in texts; all of them when there is none.
std::vector<int> TreeSearch::candidates(const QList<QByteArray> &words) const
{
    std::vector<int> entries;
    const auto word = std::find_if(words.begin(), words.end(), [](const QByteArray &w) {
        return idOf(w) == 0 && !isPathWord(w);
    });
    if (word == words.end()) {
        entries.resize(m_entries.size());
        std::iota(entries.begin(), entries.end(), 0);
        return entries;
    }
    const char *const end = m_texts.constData() + m_texts.size();
    const char *from = m_texts.constData();
    while (from < end) {
        const auto *at = static_cast<const char *>(
            ::memmem(from, std::size_t(end - from), word->constData(), std::size_t(word->size())));
        if (!at)
            break;
        const int offset = int(at - m_texts.constData());
        const auto next =
            std::upper_bound(m_entries.begin(), m_entries.end(), offset,
                             [](int o, const Entry &entry) { return o < entry.textBegin; });
        entries.push_back(int(next - m_entries.begin()) - 1);
        from = next == m_entries.end() ? end : m_texts.constData() + next->textBegin;
    }
    return entries;
}

TreeSearch::Found TreeSearch::find(const Nodes::NodesCollection &project, const QString &text)
{
    Found found;
    const QList<QByteArray> words = wordsOf(text);
    if (words.isEmpty())
        return found;
    read(project);
    for (const int entry : candidates(words)) {
        const bool isHit = std::all_of(words.begin(), words.end(), [&](const QByteArray &word) {
            return matches(entry, word);
        });
        if (!isHit)
            continue;
        found.hits.push_back(m_entries[std::size_t(entry)].id);
        for (int at = entry; at >= 0; at = m_entries[std::size_t(at)].parent) {
            if (!found.shown.insert(m_entries[std::size_t(at)].id).second)
                break;
        }
    }
    return found;
}

} // namespace Editor
