#pragma once

#include "widgets/elements/symbols/SymbolStyle.h"

#include <QByteArray>
#include <QVector>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace Widgets {

/// Writes the text of a picture anew in one style. Scripts and animations are left out. Any thread.
class SymbolRewriter
{
public:
    SymbolRewriter(const QByteArray &svg, const SymbolStyle &style);
    QByteArray rewritten();

private:
    enum class Part { None, Body, Fill, Line, Sign, Level };

    static Part partNamed(const QString &word);
    static Part partOf(const QXmlStreamAttributes &attributes);
    bool isShown(const QXmlStreamAttributes &attributes) const;
    void startElement();
    void writeHalves();
    /// `isOwn`: the element itself is that part, not a group around it.
    void writeAttributes(Part part, bool isOwn);
    void writePaints(Part part, bool isOwn);
    static QString inColor(const QString &drawn, const QColor &color);

    const SymbolStyle &m_style;
    QXmlStreamReader m_reader;
    QByteArray m_text;
    QXmlStreamWriter m_writer;
    QVector<Part> m_parts; // of the elements that are open
    bool m_hasLevel = false;
};

} // namespace Widgets
