#include "editor/workspace/TableFile.h"

#include "editor/workspace/Workspace.h"

#include <QFileDialog>
#include <QSaveFile>

namespace Editor {

QString TableFile::write(const QString &path, const Nodes::TextTable &table)
{
    const std::string text =
        std::string(Nodes::DelimitedText::ByteOrderMark) + Nodes::DelimitedText::Write(table, ';');
    QSaveFile file(path);
    const bool isWritten = file.open(QIODevice::WriteOnly) &&
                           file.write(text.data(), qint64(text.size())) == qint64(text.size()) &&
                           file.commit();
    return isWritten ? QString() : file.errorString();
}

void TableFile::save(Workspace &workspace, QWidget *parent, const QString &title, int rows,
                     const Nodes::TextTable &table)
{
    QString path =
        QFileDialog::getSaveFileName(parent, title, {}, QStringLiteral("Таблица CSV (*.csv)"));
    if (path.isEmpty())
        return;
    if (!path.section('/', -1).contains(QLatin1Char('.')))
        path += QLatin1String(".csv");
    const QString error = write(path, table);
    if (error.isEmpty())
        workspace.tell(Workspace::Info,
                       QStringLiteral("Сохранено строк: %1, файл «%2».").arg(rows).arg(path));
    else
        workspace.tell(Workspace::Error,
                       QStringLiteral("Файл «%1» не записан: %2.").arg(path, error));
}

} // namespace Editor
