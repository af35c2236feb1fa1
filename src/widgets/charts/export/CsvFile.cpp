#include "widgets/charts/export/CsvFile.h"

#include "widgets/charts/export/CsvRows.h"

#include <QDir>

namespace Widgets {

QString CsvFile::error() const
{
    return QStringLiteral("Файл «%1» не записан: %2. Проверьте место на диске и права на каталог.")
        .arg(QDir::toNativeSeparators(m_file->fileName()), m_file->errorString());
}

void CsvFile::open(const QString &name)
{
    m_file = std::make_unique<QSaveFile>(name);
    const bool isOpen = m_file->open(QIODevice::WriteOnly);
    emit written(isOpen && m_file->write(CsvRows::header()) >= 0 ? QString() : error());
}

void CsvFile::write(const QByteArray &text)
{
    const bool isWritten = m_file->write(text) == text.size() && m_file->flush();
    emit written(isWritten ? QString() : error());
}

void CsvFile::close(bool isKept)
{
    QString failure;
    if (m_file && isKept && !m_file->commit())
        failure = error();
    else if (m_file && !isKept)
        m_file->cancelWriting();
    m_file.reset();
    emit closed(failure);
}

} // namespace Widgets
