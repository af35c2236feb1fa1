#include "widgets/actions/kinds/qactionPlaySound.h"

#include "widgets/actions/kinds/SoundPlayer.h"
#include "widgets/actions/running/ActionJournal.h"

#include <QAudioDeviceInfo>
#include <QFileInfo>
#include <QSet>

namespace Widgets {

namespace {

/// Tells that something is wrong once, until it was right again.
void tell(const ActionJournal &journal, const QString &file, const std::string &problem,
          bool isGood)
{
    static QSet<QString> told;
    const QString key = file + QLatin1Char('\n') + QString::fromStdString(problem);
    if (isGood) {
        told.remove(key);
    } else if (!told.contains(key)) {
        told.insert(key);
        journal.write(Nodes::LevelWarning, problem);
    }
}

} // namespace

void qactionPlaySound::Execute()
{
    const auto *node = nodeAs<Node>();
    if (!node)
        return;
    const ActionJournal journal(*node, trigger());
    const std::string name = "«" + node->GetSound().GetFilePath() + "»";
    const QString file = QString::fromStdString(node->GetSound().GetFullFilePath());
    const bool isThere = !file.isEmpty() && QFileInfo(file).isFile();
    tell(journal, file, "Нет звукового файла " + name, isThere);
    if (!isThere || QAudioDeviceInfo::defaultOutputDevice().isNull())
        return;
    SoundPlayer::instance().play(file, [journal, file, name](bool isSound) {
        tell(journal, file, "Файл " + name + " не звучит: он повреждён или не WAV. Замените файл.",
             isSound);
        if (isSound)
            journal.log("qactionPlaySound - sound file played");
    });
}

} // namespace Widgets
