#include "editor/properties/values/FilePicker.h"

#include "utils/files/ResourceFiles.h"

#include <QGridLayout>
#include <QImageReader>
#include <QLabel>

namespace Editor {

namespace {

constexpr int previewSize = 180;

QString filterOf(bool isSound)
{
    return isSound ? QStringLiteral("Звуки (*.wav);;Все файлы (*)")
                   : QStringLiteral("Картинки (*.svg *.png *.jpg *.jpeg *.gif *.bmp);;"
                                    "Отчёты (*.lrxml);;Все файлы (*)");
}

} // namespace

FilePicker::FilePicker(const QString &directory, bool isSound, QWidget *parent)
    : QFileDialog(parent, QString(), directory, filterOf(isSound)),
      m_directory(directory),
      m_preview(new QLabel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setOption(QFileDialog::DontUseNativeDialog);
    setFileMode(QFileDialog::ExistingFile);
    m_preview->setFixedSize(previewSize, previewSize);
    m_preview->setAlignment(Qt::AlignCenter);
    m_preview->setWordWrap(true);
    m_preview->setFrameShape(QFrame::StyledPanel);
    if (auto *grid = qobject_cast<QGridLayout *>(layout()))
        grid->addWidget(m_preview, 1, grid->columnCount(), Qt::AlignTop);
    connect(this, &QFileDialog::currentChanged, this, &FilePicker::preview);
}

FilePicker::~FilePicker() = default;

void FilePicker::showFile(const QString &name)
{
    const QFileInfo file(QDir(m_directory).filePath(name));
    if (name.isEmpty() || !file.isFile())
        return;
    setDirectory(file.absolutePath());
    selectFile(file.fileName());
    preview(file.absoluteFilePath());
}

// Large pictures are scaled while they are read, so that one of 100 megapixels costs no gigabyte.
void FilePicker::preview(const QString &path)
{
    const QFileInfo file(path);
    m_preview->clear();
    if (!file.isFile() || file.size() > Utils::ResourceFiles::MaximumSize)
        return;
    QImageReader reader(path);
    const QSize size = reader.size();
    if (size.isEmpty())
        return;
    reader.setScaledSize(size.scaled(previewSize - 8, previewSize - 8, Qt::KeepAspectRatio));
    const QImage image = reader.read();
    if (image.isNull())
        m_preview->setText(QStringLiteral("Картинка не читается"));
    else
        m_preview->setPixmap(QPixmap::fromImage(image));
}

} // namespace Editor
