#include "widgets/tools/CopyTargets.h"

#include <QFileDialog>
#include <QStorageInfo>

namespace Widgets {

namespace {

constexpr int browseRole = Qt::UserRole + 1;

bool isPluggedIn(const QStorageInfo &disk)
{
    const QString root = disk.rootPath();
    const bool isPlace = root.startsWith(QStringLiteral("/media/")) ||
                         root.startsWith(QStringLiteral("/run/media/")) ||
                         root.startsWith(QStringLiteral("/mnt/"));
    return isPlace && disk.device().startsWith("/dev/") && disk.isReady() && !disk.isReadOnly();
}

} // namespace

CopyTargets::CopyTargets(const QString &preset, QWidget *parent) : QComboBox(parent)
{
    addItem(preset.isEmpty() ? QStringLiteral("Папка не задана") : preset, preset);
    addDisks();
    addItem(QStringLiteral("Выбрать папку…"));
    setItemData(count() - 1, true, browseRole);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &CopyTargets::onActivated);
}

void CopyTargets::addDisks()
{
    for (const QStorageInfo &disk : QStorageInfo::mountedVolumes()) {
        if (isPluggedIn(disk))
            addItem(disk.rootPath(), disk.rootPath());
    }
}

void CopyTargets::choose(const QString &folder)
{
    int index = findData(folder);
    if (index < 0) {
        index = count() - 1;
        insertItem(index, folder, folder);
    }
    setCurrentIndex(index);
    m_previous = index;
}

void CopyTargets::onActivated(int index)
{
    if (!itemData(index, browseRole).toBool()) {
        m_previous = index;
        return;
    }
    setCurrentIndex(m_previous);
    const QString folder = QFileDialog::getExistingDirectory(
        this, QStringLiteral("Куда копировать"), this->folder(), QFileDialog::ShowDirsOnly);
    if (!folder.isEmpty())
        choose(folder);
}

} // namespace Widgets
