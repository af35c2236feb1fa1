#include "widgets/reports/engine/pages/PageItem.h"

#include <QDataStream>
#include <QIODevice>

namespace LimeReport {

namespace {

// The fastest: texts of tables shrink to a fifth all the same.
constexpr int CompressionLevel = 1;

QDataStream &operator<<(QDataStream &out, const PageItem &item)
{
    out << quint8(item.kind) << item.quality << qint32(item.style) << qint32(item.late)
        << float(item.rect.x()) << float(item.rect.y()) << float(item.rect.width())
        << float(item.rect.height()) << item.text.toUtf8() << item.data;
    if (item.kind == PageItem::Fill)
        out << item.color;
    return out;
}

QDataStream &operator>>(QDataStream &in, PageItem &item)
{
    quint8 kind = 0;
    qint32 style = 0, late = 0;
    float x = 0, y = 0, width = 0, height = 0;
    QByteArray text;
    in >> kind >> item.quality >> style >> late >> x >> y >> width >> height >> text >> item.data;
    item.kind = PageItem::Kind(kind);
    item.style = style;
    item.late = late;
    item.rect = QRectF(double(x), double(y), double(width), double(height));
    item.text = QString::fromUtf8(text);
    if (item.kind == PageItem::Fill)
        in >> item.color;
    return in;
}

} // namespace

QByteArray toBytes(const PrintedPage &page)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << qint32(page.page) << page.size << qint32(page.items.size());
    for (const PageItem &item : page.items)
        out << item;
    return qCompress(bytes, CompressionLevel);
}

PrintedPage pageFromBytes(const QByteArray &compressed)
{
    const QByteArray bytes = qUncompress(compressed);
    QDataStream in(bytes);
    PrintedPage page;
    qint32 index = 0, count = 0;
    in >> index >> page.size >> count;
    page.page = index;
    while (count-- > 0 && in.status() == QDataStream::Ok) {
        PageItem item;
        in >> item;
        page.items.append(item);
    }
    return in.status() == QDataStream::Ok ? page : PrintedPage();
}

} // namespace LimeReport
