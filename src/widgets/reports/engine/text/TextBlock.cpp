#include "widgets/reports/engine/text/TextBlock.h"

#include "widgets/reports/engine/text/Reference.h"
#include "widgets/reports/engine/text/TextStyle.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QTextDocument>
#include <QTextLayout>
#include <QUrl>
#include <QVariant>

namespace LimeReport {

namespace {

// What measuring and painting may differ by.
constexpr double Slack = 0.5;

constexpr int MarkSide = 24; // of what stands for a picture

// Rich text comes from templates and data: it must not make the station read files or the network.
// For a picture that is not given Qt would try the file of its name, so that a mark is given.
class ClosedDocument : public QTextDocument
{
protected:
    QVariant loadResource(int type, const QUrl &) override
    {
        if (type != ImageResource)
            return QVariant();
        QImage mark(MarkSide, MarkSide, QImage::Format_ARGB32_Premultiplied);
        mark.fill(Qt::white);
        QPainter painter(&mark);
        painter.drawRect(0, 0, MarkSide - 1, MarkSide - 1);
        painter.drawLine(0, 0, MarkSide - 1, MarkSide - 1);
        painter.drawLine(0, MarkSide - 1, MarkSide - 1, 0);
        return mark;
    }
};

QTextOption options(const TextStyle &style)
{
    QTextOption option(style.alignment & Qt::AlignHorizontal_Mask);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setUseDesignMetrics(true);
    return option;
}

} // namespace

TextBlock::TextBlock(const TextStyle &style, const QString &text, const QSizeF &size)
    : m_style(style), m_size(style.isUpright() ? size.transposed() : size), m_text(text)
{
    if (!style.isHtml) {
        m_text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        m_text.replace(QLatin1Char('\n'), QChar::LineSeparator);
        breakLines();
        return;
    }
    m_document = std::make_unique<ClosedDocument>();
    m_document->setUndoRedoEnabled(false);
    m_document->documentLayout()->setPaintDevice(Reference::device());
    m_document->setDocumentMargin(0);
    m_document->setDefaultFont(style.font);
    m_document->setDefaultTextOption(options(style));
    m_document->setHtml(text);
    m_document->setTextWidth(room().width());
    m_height = m_document->size().height();
}

TextBlock::~TextBlock() = default;

QSizeF TextBlock::room() const
{
    return QSizeF(qMax(1.0, m_size.width() - 2 * m_style.margin),
                  qMax(0.0, m_size.height() - 2 * m_style.margin));
}

void TextBlock::breakLines()
{
    m_layout = std::make_unique<QTextLayout>(m_text, m_style.font, Reference::device());
    m_layout->setTextOption(options(m_style));
    m_layout->setCacheEnabled(true);
    const double width = room().width();
    m_layout->beginLayout();
    for (QTextLine line = m_layout->createLine(); line.isValid(); line = m_layout->createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, m_height));
        m_height += line.height();
        m_isTooWide = m_isTooWide || line.naturalTextWidth() > width + Slack;
    }
    m_layout->endLayout();
}

double TextBlock::extent() const
{
    return m_height + 2 * m_style.margin;
}

bool TextBlock::fits() const
{
    return m_height <= room().height() + Slack && !m_isTooWide;
}

int TextBlock::visibleLines(double height) const
{
    int lines = 0;
    while (lines < m_layout->lineCount()) {
        const QTextLine line = m_layout->lineAt(lines);
        if (line.y() + line.height() > height + Slack)
            break;
        ++lines;
    }
    return lines;
}

int TextBlock::charactersWithin(double height) const
{
    const double inner = height - 2 * m_style.margin;
    if (m_document)
        return m_height <= inner + Slack ? m_text.size() : 0;
    const int lines = visibleLines(inner);
    return lines == m_layout->lineCount() ? m_text.size()
                                          : (lines == 0 ? 0 : m_layout->lineAt(lines).textStart());
}

void TextBlock::paint(QPainter &painter, const QRectF &box) const
{
    const QSizeF inner = room();
    const QPointF corner(m_style.margin, m_style.margin);
    painter.setPen(m_style.color);
    // Changes of the painter's state cost more than the text itself, in files above all.
    if (m_style.angle == 0 && m_layout) {
        paintPlain(painter, box.topLeft() + corner, inner);
        return;
    }
    painter.save();
    painter.translate(box.center());
    painter.rotate(m_style.angle);
    painter.translate(-m_size.width() / 2, -m_size.height() / 2);
    if (m_document) {
        painter.translate(corner);
        paintRich(painter, inner);
    } else {
        paintPlain(painter, corner, inner);
    }
    painter.restore();
}

void TextBlock::paintPlain(QPainter &painter, const QPointF &corner, const QSizeF &inner) const
{
    const int count = m_layout->lineCount();
    const int visible = qMax(1, visibleLines(inner.height()));
    if (count == 0)
        return;
    const QTextLine last = m_layout->lineAt(visible - 1);
    const double height = last.y() + last.height();
    double top = 0;
    if (m_style.alignment & Qt::AlignBottom)
        top = inner.height() - height;
    else if (m_style.alignment & Qt::AlignVCenter)
        top = (inner.height() - height) / 2;
    const bool isCut = visible < count || m_isTooWide;
    for (int index = 0; index < visible - (isCut ? 1 : 0); ++index)
        m_layout->lineAt(index).draw(&painter, corner + QPointF(0, top));
    if (!isCut)
        return;
    const QFontMetricsF metrics(m_style.font, Reference::device());
    const QString rest =
        m_text.mid(last.textStart()).replace(QChar::LineSeparator, QLatin1Char(' '));
    QTextLayout ellipsis(metrics.elidedText(rest, Qt::ElideRight, inner.width() - Slack),
                         m_style.font, Reference::device());
    ellipsis.setTextOption(options(m_style));
    ellipsis.beginLayout();
    QTextLine line = ellipsis.createLine();
    line.setLineWidth(inner.width());
    ellipsis.endLayout();
    ellipsis.draw(&painter, corner + QPointF(0, top + last.y()));
}

void TextBlock::paintRich(QPainter &painter, const QSizeF &inner) const
{
    double top = 0;
    if (m_height < inner.height() && m_style.alignment & Qt::AlignBottom)
        top = inner.height() - m_height;
    else if (m_height < inner.height() && m_style.alignment & Qt::AlignVCenter)
        top = (inner.height() - m_height) / 2;
    painter.translate(0, top);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, m_style.color);
    context.clip = QRectF(0, 0, inner.width(), inner.height() + Slack);
    painter.setClipRect(context.clip, Qt::IntersectClip);
    m_document->documentLayout()->draw(&painter, context);
    if (m_height <= inner.height() + Slack)
        return;
    // Rich text is cut where the box ends, so a mark says that there is more.
    const QFontMetricsF metrics(m_style.font, Reference::device());
    const QString mark = QStringLiteral("…");
    const double width = metrics.horizontalAdvance(mark) * 1.5;
    const QRectF corner(inner.width() - width, inner.height() - metrics.height(), width,
                        metrics.height());
    painter.fillRect(corner, m_style.background.isValid() ? m_style.background : QColor(Qt::white));
    QTextLayout sign(mark, m_style.font, Reference::device());
    sign.beginLayout();
    sign.createLine().setLineWidth(width);
    sign.endLayout();
    sign.draw(&painter, corner.topLeft());
}

} // namespace LimeReport
