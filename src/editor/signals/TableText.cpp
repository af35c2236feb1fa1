#include "editor/signals/TableText.h"

#include "nodes/serial/Utf8.h"

#include <QTextCodec>

namespace Editor::TableText {

namespace {

enum { Utf8, Windows, Utf16, Dos };

} // namespace

const QVector<Encoding> &encodings()
{
    static const QVector<Encoding> rows = {
        {"UTF-8", "UTF-8"},
        {"windows-1251", "Windows-1251"},
        {"UTF-16", "UTF-16 (текст Юникод)"},
        {"IBM866", "DOS (866)"},
    };
    return rows;
}

int guess(const QByteArray &bytes)
{
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return Utf16;
    return Nodes::FindInvalidUtf8(bytes.toStdString()) ? Windows : Utf8;
}

std::string decode(const QByteArray &bytes, int encoding)
{
    QTextCodec *codec = QTextCodec::codecForName(encodings().value(encoding).codec);
    QString text = codec ? codec->toUnicode(bytes) : QString::fromUtf8(bytes);
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    return text.toStdString();
}

} // namespace Editor::TableText
