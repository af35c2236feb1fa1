#include "nodes/archive/recording/SignalIntake.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/history/StoredHistory.h"
#include "nodes/archive/recording/IntakeQueue.h"
#include "nodes/archive/recording/OutageMarks.h"
#include "nodes/values/SignalValue.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Nodes {

namespace {

using Sample = RecentSamples::Sample;

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t mostOverlapping = 1000000; // samples of an earlier run, beside those of this

SampleKind kindOf(const SignalValue &value, double number)
{
    switch (value.GetType()) {
    case enSignalValueType::Bool:
        return SampleKind::Logical;
    case enSignalValueType::String:
        return SampleKind::Text;
    case enSignalValueType::Result:
    case enSignalValueType::None:
        return SampleKind::Gap;
    default:
        return std::isfinite(number) ? SampleKind::Number : SampleKind::Gap;
    }
}

void append(SampleRun &run, const Sample &sample, Timestamp time, const std::string &text)
{
    switch (sample.kind) {
    case SampleKind::Gap:
        return run.AddGap(time, sample.quality);
    case SampleKind::Number:
        return run.Add(time, sample.number, sample.quality);
    case SampleKind::Logical:
        return run.AddLogical(time, sample.number != 0, sample.quality);
    case SampleKind::Text:
        return run.AddText(time, text, sample.quality);
    }
}

} // namespace

SignalIntake::SignalIntake(Settings settings, std::shared_ptr<RecentSamples::Progress> progress,
                           std::shared_ptr<IntakeQueue> queue,
                           std::shared_ptr<const StoredHistory> stored)
    : m_settings(std::move(settings)),
      m_queue(std::move(queue)),
      m_stored(std::move(stored)),
      m_recent(m_settings.limits, std::move(progress))
{
}

SignalIntake::~SignalIntake() = default;

void SignalIntake::Offer(Timestamp time, const SignalValue &value)
{
    const double number = value.ToDouble();
    const SampleKind kind = kindOf(value, number);
    const bool isNumber = kind == SampleKind::Number || kind == SampleKind::Logical;
    const Sample sample{std::max(placed(time, value), m_last + 1), isNumber ? number : none,
                        value.GetQuality(), kind};
    m_last = sample.time;
    Archived offered{sample, kind == SampleKind::Text ? value.ToString() : std::string()};
    if (isHeldBack(offered)) {
        m_heldBack = std::move(offered);
        return;
    }
    addHeldBack();
    m_archived = std::move(offered);
    add(m_archived);
}

/// A value that was there before counts from the begin on, by the clock of its source.
Timestamp SignalIntake::placed(Timestamp time, const SignalValue &value) const
{
    const Timestamp received = std::max(value.GetReceiveTime(), value.GetQualityTime());
    if (m_last != 0 || received == 0 || received >= m_settings.begin)
        return time;
    return std::max(time, m_settings.begin - std::max<Timestamp>(0, received - time));
}

bool SignalIntake::isHeldBack(const Archived &archived) const
{
    const Sample &sample = archived.sample;
    const Sample &last = m_archived.sample;
    const bool isFirst = last.time == 0;
    if (isFirst || !(m_settings.deadband > 0) || sample.kind != last.kind ||
        sample.quality != last.quality)
        return false;
    switch (sample.kind) {
    case SampleKind::Number:
        return std::abs(sample.number - last.number) < m_settings.deadband;
    case SampleKind::Logical:
        return sample.number == last.number;
    case SampleKind::Text:
        return archived.text == m_archived.text;
    case SampleKind::Gap:
        break;
    }
    return true;
}

void SignalIntake::addHeldBack()
{
    if (!m_heldBack)
        return;
    m_archived = std::move(*m_heldBack);
    m_heldBack.reset();
    add(m_archived);
}

void SignalIntake::add(const Archived &archived)
{
    if (!m_recent.Add(archived.sample, archived.text))
        noteLoss(archived.sample.time, 1);
    if (!m_isListed.exchange(true))
        m_queue->Add(shared_from_this());
    m_queue->Count();
}

void SignalIntake::End(Timestamp now)
{
    addHeldBack();
    const Sample last = m_recent.Last();
    if (IsGap(last))
        return;
    const auto at = [this](Timestamp time) { return m_last = std::max(time, m_last + 1); };
    if (now - last.time > OutageMarks::LongestSilence) {
        m_archived.sample.time = at(now);
        add(m_archived);
    }
    add({{at(now), none, Quality::Bad, SampleKind::Gap}, {}});
}

void SignalIntake::noteLoss(Timestamp from, std::uint64_t count)
{
    m_lost += count;
    Timestamp known = m_lostFrom;
    while ((known == 0 || from < known) && !m_lostFrom.compare_exchange_weak(known, from)) {
    }
}

SamplePacket::Part SignalIntake::Pack(std::size_t most, std::size_t mostTextBytes)
{
    SamplePacket::Part part;
    part.signal = m_settings.key;
    m_isListed = false; // what comes from here on lists it again
    for (const RecentSamples::Part &samples : m_recent.Take(most, mostTextBytes)) {
        for (const Sample &sample : samples)
            append(part.run, sample, freePlace(sample.time), samples.TextOf(sample));
    }
    m_packed = part.run.Size();
    m_packedFrom = part.run.IsEmpty() ? 0 : part.run.times.front();
    if (m_packedFrom != 0 && m_packedFrom <= m_takenTo)
        m_stored->Forget(m_settings.key);
    if (const Timestamp lostFrom = m_lostFrom.exchange(0)) {
        part.run.AddGap(lostFrom);
        m_packedFrom = m_packedFrom == 0 ? lostFrom : std::min(m_packedFrom, lostFrom);
    }
    return part;
}

Timestamp SignalIntake::freePlace(Timestamp time)
{
    if (time > m_takenTo)
        return time;
    auto place = std::lower_bound(m_taken.begin(), m_taken.end(), time);
    for (; place != m_taken.end() && *place == time; ++place)
        ++time;
    m_taken.insert(place, time);
    return time;
}

void SignalIntake::SetTaken(std::vector<Timestamp> times)
{
    m_taken = std::move(times);
    m_takenTo = m_taken.empty() ? 0 : m_taken.back();
}

void SignalIntake::Send(std::uint64_t key)
{
    m_recent.Send(key);
    if (key == 0 && m_packedFrom != 0)
        noteLoss(m_packedFrom, m_packed);
}

void SignalIntake::readStored(HistoryColumnBuilder &into, const RecentSamples::View &view,
                              Result &result, const std::atomic<bool> &isCancelled) const
{
    const Timestamp end = view.begin;
    // What is still to come must not be missing in what is kept of the answer.
    const Timestamp closed = view.missing == 0 ? end : 0;
    if (m_settings.isText) {
        const Result read = readTexts(into, end, isCancelled);
        if (!read)
            result = read;
        return;
    }
    HistoryColumnBuilder older = HistoryColumnBuilder::OnGrid(
        into.GetFrom(), std::min(into.GetTo(), end - 1), into.GetMaxPoints(), into.GetGridBits());
    const Result read = m_stored->Read(m_settings.key, closed, older, isCancelled);
    if (!read)
        result = read;
    into.Add(older.Take(), std::numeric_limits<Timestamp>::min(), end);
}

/// Sample by sample: of texts there are no aggregates.
Result SignalIntake::readTexts(HistoryColumnBuilder &into, Timestamp end,
                               const std::atomic<bool> &isCancelled) const
{
    HistoryColumnBuilder before(into.GetFrom(), into.GetFrom(), 2);
    const Result found = m_stored->Read(m_settings.key, 0, before, isCancelled);
    const HistoryColumn column = before.Take();
    if (!found || column.times.empty())
        return found;
    return m_stored->Visit(
        m_settings.key, column.times.front(), std::min(into.GetTo(), end - 1),
        [&into, &isCancelled](const SampleRun &run) {
            for (std::size_t i = 0; i < run.Size(); ++i)
                into.AddText(run.times[i], run.TextAt(i), run.qualities[i]);
            return !isCancelled;
        },
        isCancelled);
}

/// What an earlier run left of times that the clock goes through again.
SampleRun SignalIntake::readOverlap(Timestamp from, Timestamp to,
                                    const std::atomic<bool> &isCancelled) const
{
    SampleRun run;
    if (from <= to)
        (void)m_stored->Visit(
            m_settings.key, from, to,
            [&run](const SampleRun &some) {
                run.Append(some);
                return run.Size() < mostOverlapping;
            },
            isCancelled);
    return run;
}

Result SignalIntake::Read(HistoryColumnBuilder &into, const std::atomic<bool> &isCancelled) const
{
    const RecentSamples::View view = m_recent.Look(into.GetFrom(), into.GetTo());
    Result result;
    if (view.missing != 0 && view.missing >= into.GetFrom())
        result = Result(Result::NotAvailable,
                        "some samples wait beside the archive and can be read when they are in it");
    if (view.begin > into.GetFrom())
        readStored(into, view, result, isCancelled);
    const SampleRun overlap = readOverlap(std::max(view.begin, into.GetFrom()),
                                          std::min(into.GetTo(), m_takenTo.load()), isCancelled);
    std::size_t next = 0;
    const auto addOverlap = [&](Timestamp before) {
        for (; next < overlap.Size() && overlap.times[next] < before; ++next)
            into.Add(overlap.times[next], overlap.numbers[next], overlap.qualities[next]);
    };
    for (const RecentSamples::Part &part : view.parts) {
        if (isCancelled)
            return Result(Result::Cancelled);
        for (const Sample &sample : part) {
            addOverlap(sample.time);
            if (next < overlap.Size() && overlap.times[next] == sample.time)
                ++next;
            if (sample.kind == SampleKind::Text)
                into.AddText(sample.time, part.TextOf(sample), sample.quality);
            else
                into.Add(sample.time, sample.number, sample.quality);
        }
    }
    addOverlap(std::numeric_limits<Timestamp>::max());
    return result;
}

} // namespace Nodes
