#include "nodes/archive/HistoryTap.h"

#include "nodes/archive/HistoryService.h"
#include "nodes/archive/SessionHistory.h"
#include "nodes/archive/recording/ArchiveRecording.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

HistoryTap::HistoryTap() = default;

HistoryTap::~HistoryTap()
{
    Stop();
}

Result HistoryTap::Start(const systemCore &core, const BasicSignal &signal,
                         const Settings &settings)
{
    if (IsRunning())
        return Result();
    HistoryService &service = core.GetHistory();
    if (service.HasSource(signal.GetId()))
        return Result(&signal, Result::Duplicate, "its history is kept already");
    const systemArchiver *archiver = core.GetSystemArchiver();
    m_recording = archiver ? archiver->GetRecording() : nullptr;
    const auto samples = std::size_t(settings.samples);
    Result added;
    if (m_recording) {
        m_intake = m_recording->Connect(
            archiver->KeyOf(signal),
            {settings.deadband, signal.GetValueType() == enSignalValueType::String, samples});
        m_tap = m_intake;
        added = service.AddSource(signal.GetId(), m_intake);
    } else {
        auto session = std::make_shared<SessionHistory>(samples);
        m_tap = session;
        added = service.AddSource(signal.GetId(), session);
    }
    m_cell = signal.GetCell();
    m_cell->AddTap(m_tap);
    return added;
}

void HistoryTap::Stop()
{
    if (!m_cell)
        return;
    m_cell->RemoveTap(*m_tap);
    if (m_recording)
        m_recording->Disconnect(m_intake);
    m_cell.reset();
    m_tap.reset();
    m_intake.reset();
    m_recording.reset();
}

} // namespace Nodes
