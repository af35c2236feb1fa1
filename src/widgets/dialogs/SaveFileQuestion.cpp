#include "widgets/dialogs/SaveFileQuestion.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace Widgets {

namespace {

// The directory chosen last, for the next file.
QString &lastDirectory()
{
    static QString directory = QDir::homePath();
    return directory;
}

} // namespace

QString SaveFileQuestion::ask(QWidget *parent) const
{
    QFileDialog dialog(parent, caption, lastDirectory(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending); // so that it asks before a file of the whole name goes
    QString name = proposed;
    for (const QChar forbidden : QStringLiteral("/\\:*?\"<>|"))
        name.replace(forbidden, '_');
    dialog.selectFile(name);
    const std::pair<QFileDialog::DialogLabel, const char *> labels[] = {
        {QFileDialog::LookIn, "Папка:"},
        {QFileDialog::FileName, "Имя файла:"},
        {QFileDialog::FileType, "Вид файла:"},
        {QFileDialog::Accept, "Сохранить"},
        {QFileDialog::Reject, "Отмена"}};
    for (const auto &[label, text] : labels)
        dialog.setLabelText(label, QString::fromUtf8(text));
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString file = dialog.selectedFiles().value(0);
    lastDirectory() = QFileInfo(file).absolutePath();
    return file;
}

QString SaveFileQuestion::failure(const QString &file, const QString &reason)
{
    return QStringLiteral("Файл «%1» не записан: %2. Проверьте место на диске и права на каталог.")
        .arg(QDir::toNativeSeparators(file), reason);
}

} // namespace Widgets
