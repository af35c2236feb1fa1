#include "apps/records/GenerateCommand.h"

#include "apps/common/history/ArchiveWriter.h"
#include "apps/common/history/ArchivedSignals.h"
#include "apps/common/history/HistoryGenerator.h"
#include "apps/records/Message.h"
#include "apps/records/RecordsOptions.h"
#include "apps/records/TimeText.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

namespace Records {

namespace {

using Nodes::Result;

constexpr Nodes::Timestamp defaultSpan = 30ll * 86400 * 1000000;

} // namespace

bool GenerateCommand::run()
{
    Result result = m_archive.prepare(m_options);
    if (result && !m_archive.project().isLoaded())
        result = Result(Result::InvalidArgument,
                        "--project has to be the file or directory of a project");
    if (result)
        result = chooseSignals();
    if (result)
        result = generate();
    return Message::check(result);
}

Result GenerateCommand::chooseSignals()
{
    const ProjectFile &project = m_archive.project();
    if (m_options.signals.empty())
        m_signals = m_options.allSignals ? Host::stationSignals(project.core())
                                         : Host::archivedSignals(project.core());
    for (const unsigned long id : m_options.signals) {
        const Nodes::BasicSignal *signal = project.find(id);
        if (!signal)
            return Result(Result::NotFound,
                          "the project has no signal with the id " + std::to_string(id));
        m_signals.push_back(signal);
    }
    return m_signals.empty()
               ? Result(Result::NotFound, "the project archives no signal; name some with "
                                          "--signal, or take --all of them")
               : Result();
}

Result GenerateCommand::generate()
{
    Host::HistoryProfiles profiles;
    Host::ArchiveWriter writer;
    Result result = profiles.load(m_archive.project().directory());
    if (result)
        result = writer.open(m_archive.location());
    if (result)
        result = m_archive.list();
    if (!result)
        return result;
    Host::HistoryGenerator generator(writer, m_archive.project().home(), profiles);
    Host::HistoryGenerator::Wish wish;
    wish.to = m_options.to.value_or(Nodes::Clock::Current().Now());
    wish.from = wish.to - (m_options.span > 0 ? m_options.span : defaultSpan);
    wish.interval = m_options.interval;
    wish.seed = m_options.seed;
    Host::HistoryGenerator::Outcome outcome;
    result = generator.generate(
        m_signals, m_archive.signals(), wish,
        [](std::size_t done, std::size_t all) {
            Message::progress(std::to_string(done) + " of " + std::to_string(all) + " signals");
        },
        outcome);
    const Result finished = writer.finish();
    Message::tell(std::to_string(writer.written()) + " samples were generated, " +
                  TimeText::format(wish.from) + " to " + TimeText::format(wish.to) + ", for " +
                  std::to_string(outcome.filled) + " signals; " +
                  std::to_string(outcome.passedOver) + " had a past already");
    return result ? finished : result;
}

} // namespace Records
