#include "widgets/reports/export/XlsxCheck.h"

#include <QFile>
#include <QtEndian>

#include <zlib.h>

namespace Widgets {

namespace {

// Of the container: records begin with these marks, numbers are little endian.
constexpr quint32 endMark = 0x06054b50;
constexpr quint32 entryMark = 0x02014b50;
constexpr int endSize = 22;
constexpr int entrySize = 46;
constexpr int localSize = 30;
constexpr int pieceSize = 1 << 18;

class Reader
{
public:
    explicit Reader(const QString &file) : m_file(file) {}

    QString run(qint64 rows)
    {
        if (!m_file.open(QIODevice::ReadOnly))
            return m_file.errorString();
        const qint64 size = m_file.size();
        const QByteArray end = bytesAt(size - endSize, endSize);
        if (end.size() != endSize || number32(end, 0) != endMark)
            return QStringLiteral("файл оборван");
        const int entries = number16(end, 10);
        qint64 at = number32(end, 16);
        for (int i = 0; i < entries; ++i) {
            const QByteArray entry = bytesAt(at, entrySize);
            if (entry.size() != entrySize || number32(entry, 0) != entryMark)
                return QStringLiteral("файл оборван");
            const int nameSize = number16(entry, 28);
            const QByteArray name = bytesAt(at + entrySize, nameSize);
            if (!isWhole(entry, name))
                return QStringLiteral("часть %1 записана не полностью")
                    .arg(QString::fromUtf8(name));
            at += entrySize + nameSize + number16(entry, 30) + number16(entry, 32);
        }
        return m_rows == rows ? QString() : QStringLiteral("записаны не все строки");
    }

private:
    static quint16 number16(const QByteArray &bytes, int at)
    {
        return qFromLittleEndian<quint16>(bytes.constData() + at);
    }
    static quint32 number32(const QByteArray &bytes, int at)
    {
        return qFromLittleEndian<quint32>(bytes.constData() + at);
    }

    QByteArray bytesAt(qint64 at, qint64 size)
    {
        return at >= 0 && m_file.seek(at) ? m_file.read(size) : QByteArray();
    }

    bool isWhole(const QByteArray &entry, const QByteArray &name)
    {
        const qint64 at = number32(entry, 42);
        const QByteArray local = bytesAt(at, localSize);
        if (local.size() != localSize)
            return false;
        const qint64 begin = at + localSize + number16(local, 26) + number16(local, 28);
        if (!m_file.seek(begin) ||
            !inflateAll(number32(entry, 20), number16(entry, 10) == Z_DEFLATED))
            return false;
        const bool isSheet = name.startsWith("xl/worksheets/sheet");
        if (isSheet)
            m_rows += m_partRows;
        const QByteArray end = isSheet ? QByteArray("</worksheet>") : QByteArray(">");
        return m_crc == number32(entry, 16) &&
               (!name.endsWith(".xml") || m_tail.trimmed().endsWith(end));
    }

    bool inflateAll(qint64 packed, bool isDeflated)
    {
        m_crc = quint32(crc32(0, nullptr, 0));
        m_tail.clear();
        m_partRows = 0;
        z_stream stream{};
        if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
            return false;
        QByteArray out(pieceSize, Qt::Uninitialized);
        int state = isDeflated ? Z_OK : Z_STREAM_END;
        while (packed > 0) {
            QByteArray in = m_file.read(std::min<qint64>(packed, pieceSize));
            if (in.isEmpty())
                break;
            packed -= in.size();
            if (!isDeflated) {
                take(in.constData(), in.size());
                continue;
            }
            stream.next_in = reinterpret_cast<Bytef *>(in.data());
            stream.avail_in = uInt(in.size());
            do {
                stream.next_out = reinterpret_cast<Bytef *>(out.data());
                stream.avail_out = uInt(out.size());
                state = inflate(&stream, Z_NO_FLUSH);
                take(out.constData(), out.size() - int(stream.avail_out));
            } while (state == Z_OK && (stream.avail_in > 0 || stream.avail_out == 0));
        }
        inflateEnd(&stream);
        return packed == 0 && state == Z_STREAM_END;
    }

    void take(const char *bytes, int size)
    {
        m_crc = quint32(crc32(m_crc, reinterpret_cast<const Bytef *>(bytes), uInt(size)));
        static const QByteArray row("<row ");
        // A row's begin may be spread over two pieces.
        const QByteArray piece =
            m_tail.right(row.size() - 1) + QByteArray::fromRawData(bytes, size);
        m_partRows += piece.count(row);
        m_tail = piece.right(64);
    }

    QFile m_file;
    quint32 m_crc = 0;
    QByteArray m_tail;
    qint64 m_partRows = 0;
    qint64 m_rows = 0;
};

} // namespace

QString xlsxFault(const QString &file, qint64 rows)
{
    return Reader(file).run(rows);
}

} // namespace Widgets
