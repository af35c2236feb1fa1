#include "widgets/dialogs/CsvFile.h"

#include "widgets/dialogs/SaveFileQuestion.h"

namespace Widgets {

QString CsvFile::error() const
{
    return SaveFileQuestion::failure(m_file->fileName(), m_file->errorString());
}

void CsvFile::open(const QString &name)
{
    m_file = std::make_unique<QSaveFile>(name);
    const bool isOpen = m_file->open(QIODevice::WriteOnly);
    emit written(isOpen && m_file->write(m_header) >= 0 ? QString() : error());
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
