#include "editor/shell/MenuLetters.h"

#include "editor/shell/MenuEntries.h"

#include <QAction>
#include <QMenu>
#include <QSet>

namespace Editor {

namespace {

/// Place of the marked letter in the text without marks; -1: none.
int marked(const QString &text)
{
    const int mark = text.indexOf(QLatin1Char('&'));
    return mark + 1 < text.size() ? mark : -1;
}

/// Of a free letter in the text, first letters of words before others; -1: none.
int freeLetter(const QString &text, const QSet<QChar> &taken)
{
    int found = -1;
    for (int i = 0; i < text.size(); ++i) {
        if (!text[i].isLetterOrNumber() || taken.contains(text[i].toLower()))
            continue;
        if (i == 0 || text[i - 1].isSpace())
            return i;
        if (found < 0)
            found = i;
    }
    return found;
}

void mark(QAction &action, const QString &plain, int letter, QSet<QChar> &taken)
{
    QString text = plain;
    if (letter >= 0) {
        taken.insert(plain[letter].toLower());
        text.insert(letter, QLatin1Char('&'));
    }
    if (text != action.text())
        action.setText(text);
}

} // namespace

void MenuLetters::assign(QMenu &menu)
{
    QSet<QChar> taken;
    QList<QAction *> unmarked;
    const QList<QAction *> actions = menu.actions();
    for (QAction *action : actions) {
        if (action->isSeparator())
            continue;
        const QString plain = PlainMenuText(action->text());
        const int letter = marked(action->text());
        if (letter >= 0 && !taken.contains(plain[letter].toLower()))
            mark(*action, plain, letter, taken);
        else
            unmarked.append(action);
    }
    for (QAction *action : qAsConst(unmarked)) {
        const QString plain = PlainMenuText(action->text());
        mark(*action, plain, freeLetter(plain, taken), taken);
    }
}

void MenuLetters::keep(QMenu &menu)
{
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&menu] { assign(menu); });
}

} // namespace Editor
