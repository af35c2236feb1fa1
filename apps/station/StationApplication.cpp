#include "apps/station/StationApplication.h"

#include "apps/common/process/StopWatchdog.h"
#include "apps/station/ScreenshotRun.h"
#include "apps/station/StationOptions.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/system/systemCore.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/reports/schedule/ScheduledReports.h"
#include "widgets/windows/WindowManager.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/desktop/SimulationMark.h"
#include "widgets/windows/loading/LoadDialog.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace Station {

namespace {
constexpr int shutdownPatience = 2000; // ms
constexpr int recordsLost = 4;         // exit code
constexpr std::chrono::seconds longestStop(20);
} // namespace

StationApplication::StationApplication(const StationOptions &options)
    : m_options(options),
      m_status(options.statusFile, options.hasStatusTexts, m_clock),
      m_core(std::make_unique<Nodes::systemCore>()),
      m_generated(*m_core)
{
    connect(&m_signals, &Host::SignalHandlers::received, QCoreApplication::instance(),
            &QCoreApplication::quit);
    m_core->SetWorkMode(Nodes::WorkModeRuntime);
    m_core->SetSimulated(m_options.isSimulated);
    for (const auto &[name, value] : m_options.defines)
        m_core->SetDefine(name, value);
}

StationApplication::~StationApplication()
{
    shutDown();
}

// Without a screen somebody looks at, a dialog would wait for ever.
bool StationApplication::isAttended() const
{
    const QString platform = QGuiApplication::platformName();
    return !m_options.isUnattended && platform != QLatin1String("offscreen") &&
           platform != QLatin1String("minimal");
}

int StationApplication::run()
{
    m_clock.mark("application ready");
    if (!load() || !openData())
        return m_signals.wasReceived() ? 0 : 1;
    m_clock.mark("project loaded");
    if (!hasFrames() && !m_options.takesScreenshots()) {
        refuse(tr("У этой станции нет ни одного фрейма: показывать нечего. Добавьте фрейм в "
                  "конфигураторе."),
               m_core->GetProjectFile() + ": the station has no frames, nothing to show");
        return 1;
    }
    if (!generateHistory())
        return 1;
    startCore();
    const int code = m_signals.wasReceived() ? 0 : serve();
    shutDown();
    return code == 0 && m_health->lostRecords() > 0 ? recordsLost : code;
}

bool StationApplication::load()
{
    Widgets::DialogRequest request;
    request.subject = QString::fromStdString(m_options.project);
    const Widgets::OwnedDialog<Widgets::LoadDialog> dialog(request);
    dialog->setUnattended(!isAttended());
    dialog->setShowsProgress(m_options.showsSplash);
    const bool isLoaded = dialog->load();
    logFindings(*dialog);
    if (!isLoaded || m_signals.wasReceived())
        return false;
    m_core->SetLoadReport(dialog->report());
    m_core->AdoptProject(dialog->takeProject(), dialog->file().toStdString());
    const Nodes::Result selected = m_core->SelectStation(m_options.station);
    if (!selected)
        refuse(tr("В проекте нет станции «%1». Укажите параметром --station одну из имеющихся: "
                  "%2.")
                   .arg(QString::fromStdString(m_options.station), stationNames()),
               selected.GetDetail());
    return bool(selected);
}

QString StationApplication::stationNames() const
{
    QStringList names;
    for (const auto *station : m_core->GetNodesCollection()->GetRoot()->GetObjects(
             Nodes::NodeType(Nodes::NodeType::SubtypeStation)))
        names << QStringLiteral("«%1»").arg(QString::fromStdString(station->GetName()));
    return names.isEmpty() ? tr("в проекте нет ни одной") : names.join(QStringLiteral(", "));
}

void StationApplication::logFindings(const Widgets::LoadDialog &dialog) const
{
    for (const Nodes::LoadMessage &message : dialog.report().GetMessages())
        std::fprintf(stderr, "station: %s\n", message.ToString().c_str());
    if (!dialog.loadResult())
        std::fprintf(stderr, "station: cannot load the project: %s\n",
                     dialog.loadResult().GetDetail().c_str());
}

// Made-up values never get among the records of the plant, not even in a directory that was named.
QString StationApplication::dataPath() const
{
    const QString asked = QString::fromStdString(m_options.dataDirectory);
    if (!asked.isEmpty())
        return m_options.isSimulated ? asked + QLatin1String("/simulation") : asked;
    QString name = QString::fromStdString(m_core->GetNodesCollection()->GetRoot()->GetName());
    if (!m_options.station.empty())
        name += QLatin1Char(' ') + QString::fromStdString(m_options.station);
    if (m_options.isSimulated)
        name += QLatin1String(" simulation");
    return Host::DataDirectory::defaultPath(name);
}

bool StationApplication::openData()
{
    // Pictures are taken beside a running station and leave no records.
    const Nodes::Result opened = m_options.dataDirectory.empty() && m_options.takesScreenshots()
                                     ? m_data.openTemporary()
                                     : m_data.open(dataPath());
    if (opened) {
        m_core->SetDataDirectory(m_data.path().toStdString());
        if (!m_data.isTemporary())
            m_core->SetFallbackDirectories(m_data.fallbacks(m_options.fallback));
        return true;
    }
    const bool isTaken = opened == Nodes::Result::Refused;
    refuse(isTaken ? tr("Каталог данных «%1» занят другой станцией. Закройте её или укажите другой "
                        "каталог параметром --data.")
                         .arg(m_data.path())
                   : tr("Каталог данных «%1» недоступен. Проверьте права или укажите "
                        "другой каталог параметром --data.")
                         .arg(m_data.path()),
           opened.GetDetail());
    return false;
}

void StationApplication::refuse(const QString &text, const std::string &detail) const
{
    std::fprintf(stderr, "station: %s\n", detail.c_str());
    if (isAttended())
        Widgets::PlainMessageBox::ask(QMessageBox::Critical, tr("Станция оператора"), text);
}

bool StationApplication::hasFrames() const
{
    Nodes::NodeLinks frames;
    m_core->GetNodesCollection()->FindNodes(Nodes::NodeType::TypeFrame, &frames);
    return std::any_of(frames.begin(), frames.end(),
                       [](const Nodes::NodeLink &frame) { return frame->IsLocal(); });
}

bool StationApplication::generateHistory()
{
    if (m_options.generatedSpan == 0)
        return true;
    const Nodes::Result made = m_generated.make(m_options.generatedSpan);
    if (!made)
        refuse(tr("История не сгенерирована: %1.")
                   .arg(QString::fromStdString(made.GetResultTranslated())),
               "no history was generated: " + made.GetDetail());
    m_clock.mark("history generated");
    return bool(made);
}

void StationApplication::startCore()
{
    const Nodes::Result started = m_core->Start();
    if (!started)
        std::fprintf(stderr, "station: the journal cannot be written: %s; trying on\n",
                     started.ToString().c_str());
    m_generated.enter();
    m_health = std::make_unique<StationHealth>(*m_core, m_data);
    m_status.watch(*m_health);
    m_clock.mark("core started");
}

int StationApplication::serve()
{
    if (m_options.takesScreenshots())
        Widgets::AssumeDisplays({m_options.pictureWidth, m_options.pictureHeight});
    if (m_options.isSimulated)
        m_mark = std::make_unique<Widgets::SimulationMark>();
    m_manager = std::make_unique<Widgets::WindowManager>(m_core.get());
    m_clock.watchFirstFrame();
    m_manager->Start();
    m_status.serve(*m_manager);
    m_clock.mark("windows shown");
    if (m_options.takesScreenshots())
        return ScreenshotRun(*m_manager, QString::fromStdString(m_options.screenshots)).run();
    if (!m_options.isSimulated) // nobody files reports of made-up values
        m_reports = std::make_unique<Widgets::ScheduledReports>(*m_core);
    return QCoreApplication::exec();
}

void StationApplication::shutDown()
{
    const Host::StopWatchdog watchdog(longestStop, recordsLost);
    m_reports.reset();
    if (m_manager)
        m_manager->finishActions(shutdownPatience); // what the windows do on closing
    m_manager.reset();
    m_mark.reset();
    m_core->Stop();
    if (m_health)
        m_health->finish();
}

} // namespace Station
