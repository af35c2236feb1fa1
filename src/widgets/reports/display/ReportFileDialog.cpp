#include "widgets/reports/display/ReportFileDialog.h"

#include "widgets/charts/menus/TouchMenu.h"

#include <QDir>
#include <QFileDialog>

namespace Widgets {

namespace {

// The directory chosen last, for the next file.
QString &lastDirectory()
{
    static QString directory = QDir::homePath();
    return directory;
}

} // namespace

QString ReportFileDialog::ask(QWidget *element, const QString &caption, const QString &name,
                              const QString &ending)
{
    QFileDialog dialog(TouchMenu::windowOf(element), caption, lastDirectory(),
                       QStringLiteral("%1 (*.%2)").arg(ending.toUpper(), ending));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending);
    QString proposed = name;
    for (const QChar forbidden : QStringLiteral("/\\:*?\"<>|"))
        proposed.replace(forbidden, QLatin1Char('_'));
    dialog.selectFile(proposed);
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

} // namespace Widgets
