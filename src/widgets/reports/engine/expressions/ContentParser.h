#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace LimeReport {

/// A piece of an item's content.
struct ContentPiece
{
    enum class Kind { Text, Field, Variable, Script };

    Kind kind = Kind::Text;
    QString whole; ///< as it stands in the content, "$D{a.b}"
    QString body;  ///< what is between the braces; of Text the same as whole
};

/// Takes contents and scripts apart. No state.
namespace ContentParser {

struct Parsed
{
    QVector<ContentPiece> pieces;
    QStringList errors; ///< an expression without its closing brace; it is left as text
};

/// `isHtml`: entities within expressions are decoded.
WIDGETS_EXPORT Parsed parse(const QString &content, bool isHtml = false);

/// The position after the $D{...} or $V{...} that begins at `at`; -1 when none does.
int nestedEnd(const QString &text, int at);
/// The position after what begins at `at` of a script: a string literal, a comment, a nested
/// expression or else one character. Literals that do not end reach to the end.
int lexemeEnd(const QString &script, int at);
/// Whether a string literal begins there.
bool isQuote(QChar c);
/// Position after the bracket that closes the one at `at`; -1 when none does.
int bracketEnd(const QString &script, int at);

} // namespace ContentParser

} // namespace LimeReport
