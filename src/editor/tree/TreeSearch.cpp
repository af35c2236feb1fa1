#include "editor/tree/TreeSearch.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <tuple>

namespace Editor {

namespace {

constexpr char textEnd = '\n';

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
        texts.append(TreeSearch::folded(QString::fromStdString(text)));
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
        return {TreeSearch::folded(text.trimmed())}; // names in paths may have blanks
    for (const QString &word : text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts))
        words.append(TreeSearch::folded(word));
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

QByteArray TreeSearch::folded(const QString &text)
{
    return text.toCaseFolded().replace(QChar(0x451), QChar(0x435)).toUtf8();
}

int TreeSearch::nearness(const QByteArray &name, const QByteArray &text)
{
    const int at = name.indexOf(text);
    if (at <= 0)
        return at < 0 ? 4 : name.size() == text.size() ? 0 : 1;
    return name.contains(' ' + text) ? 2 : 3;
}

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

QByteArray TreeSearch::nameOf(int entry) const
{
    const QByteArray text = textOf(entry);
    return QByteArray::fromRawData(text.constData(), text.indexOf(textEnd));
}

QByteArray TreeSearch::pathOf(int entry) const
{
    QByteArray path;
    for (; entry > 0; entry = m_entries[std::size_t(entry)].parent) { // without the root's name
        path.prepend(nameOf(entry));
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

std::vector<int> TreeSearch::hits(const QList<QByteArray> &words) const
{
    std::vector<int> found = candidates(words);
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&](int entry) {
                                   return !std::all_of(words.begin(), words.end(),
                                                       [&](const QByteArray &word) {
                                                           return matches(entry, word);
                                                       });
                               }),
                found.end());
    return found;
}

int TreeSearch::rankOf(int entry, const QByteArray &word) const
{
    if (idOf(word) != 0)
        return 0;
    if (isPathWord(word))
        return pathOf(entry).endsWith(word) ? 0 : 3;
    return nearness(nameOf(entry), word);
}

TreeSearch::Best TreeSearch::best(const Nodes::NodesCollection &project, const QString &text,
                                  std::size_t atMost)
{
    struct Ranked
    {
        int rank, length, entry;
        bool operator<(const Ranked &other) const
        {
            return std::tie(rank, length, entry) < std::tie(other.rank, other.length, other.entry);
        }
    };
    Best best;
    const QList<QByteArray> words = wordsOf(text);
    if (words.isEmpty())
        return best;
    read(project);
    // Several words may stand in a name as they were typed.
    const QByteArray asTyped = words.join(' ');
    std::vector<Ranked> ranked;
    for (const int entry : hits(words))
        ranked.push_back({rankOf(entry, asTyped), nameOf(entry).size(), entry});
    best.count = ranked.size();
    const auto end = ranked.begin() + std::ptrdiff_t(std::min(atMost, ranked.size()));
    std::partial_sort(ranked.begin(), end, ranked.end());
    std::for_each(ranked.begin(), end, [&](const Ranked &hit) {
        best.hits.push_back({m_entries[std::size_t(hit.entry)].id, hit.rank});
    });
    return best;
}

TreeSearch::Found TreeSearch::find(const Nodes::NodesCollection &project, const QString &text)
{
    Found found;
    const QList<QByteArray> words = wordsOf(text);
    if (words.isEmpty())
        return found;
    read(project);
    for (const int entry : hits(words)) {
        found.hits.push_back(m_entries[std::size_t(entry)].id);
        for (int at = entry; at >= 0; at = m_entries[std::size_t(at)].parent) {
            if (!found.shown.insert(m_entries[std::size_t(at)].id).second)
                break;
        }
    }
    return found;
}

} // namespace Editor
