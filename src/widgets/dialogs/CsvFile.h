#pragma once

#include <QObject>
#include <QSaveFile>

#include <memory>

namespace Widgets {

/// File that an export writes, on a thread of its own. Each order is answered with an error text,
/// "" for success.
class CsvFile : public QObject
{
    Q_OBJECT

public:
    /// `header`: what every file begins with, complete with its end of line.
    explicit CsvFile(const QByteArray &header) : m_header(header) {}

    void open(const QString &name);
    void write(const QByteArray &text);
    /// `isKept` false: nothing of it stays.
    void close(bool isKept);

signals:
    void written(const QString &error);
    void closed(const QString &error);

private:
    QString error() const;

    const QByteArray m_header;
    std::unique_ptr<QSaveFile> m_file;
};

} // namespace Widgets
