#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace Editor {

/// Texts of tables in the encodings that spreadsheets write. Any thread.
namespace TableText {

struct Encoding
{
    const char *codec; ///< as QTextCodec calls it
    const char *title; ///< Russian
};

/// Those that can be chosen, the usual one first.
const QVector<Encoding> &encodings();
/// Row of `encodings` that the bytes seem to be in: by their byte order mark, else UTF-8 where they
/// are such, else the one that Windows uses for Russian.
int guess(const QByteArray &bytes);
/// UTF-8 text without a byte order mark. What is no text in the encoding becomes U+FFFD.
std::string decode(const QByteArray &bytes, int encoding);

} // namespace TableText

} // namespace Editor
