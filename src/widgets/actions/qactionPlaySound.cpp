#include "widgets/actions/qactionPlaySound.h"

#include "nodes/actions/actionPlaySound.h"

#include <QAudioDeviceInfo>
#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QSet>
#include <QSoundEffect>
#include <QUrl>

namespace Widgets {

namespace {

/// One for all sounds, so that a new one cuts the last; goes with the application.
QSoundEffect &effect()
{
    static QPointer<QSoundEffect> shared;
    if (!shared) {
        shared = new QSoundEffect(QCoreApplication::instance());
        shared->setVolume(1.0);
    }
    return *shared;
}

void tellMissing(const Nodes::actionPlaySound &node, const QString &file, bool isThere)
{
    static QSet<QString> told;
    const std::string configured = node.GetSound().GetFilePath();
    const QString key = file + QLatin1Char('\n') + QString::fromStdString(configured);
    if (isThere) {
        told.remove(key);
    } else if (!told.contains(key)) {
        told.insert(key);
        node.StoreMessage(Nodes::LevelWarning, "Нет звукового файла «" + configured + "»",
                          node.GetNodeLink());
    }
}

} // namespace

void qactionPlaySound::Execute()
{
    const auto *node = nodeAs<Nodes::actionPlaySound>();
    if (!node)
        return;
    const QString file = QString::fromStdString(node->GetSound().GetFullFilePath());
    const bool isThere = !file.isEmpty() && QFileInfo(file).isFile();
    tellMissing(*node, file, isThere);
    if (!isThere || QAudioDeviceInfo::defaultOutputDevice().isNull())
        return;
    QSoundEffect &sound = effect();
    sound.stop();
    sound.setSource(QUrl::fromLocalFile(file));
    sound.play();
    log("qactionPlaySound - sound file played");
}

} // namespace Widgets
