#pragma once

#include "nodes/texts/TextLanguage.h"

#include <QCompleter>

class QStandardItemModel;

namespace Editor {

/// Offers the words of a language for what stands before the cursor, with their meanings. GUI
/// thread.
class WordCompleter : public QCompleter
{
    Q_OBJECT

public:
    WordCompleter(const Nodes::TextLanguage &language, const Nodes::ConfigNode *node,
                  QObject *parent);
    ~WordCompleter() override;

    /// Words in rows: what is written, what it means.
    QStandardItemModel *words() const { return m_words; }
    /// Where the word begins that is being written.
    int wordBegin(const QString &text, int cursor) const;
    /// Shows what fits, or hides; `isAsked` for shows also before anything is written. `at`: place
    /// of the cursor in the widget.
    void offer(const QString &text, int cursor, const QRect &at, bool isAsked);

private:
    const Nodes::TextLanguage &m_language;
    QStandardItemModel *m_words;
};

} // namespace Editor
