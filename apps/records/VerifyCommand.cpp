#include "apps/records/VerifyCommand.h"

#include "apps/common/process/StopRequest.h"
#include "apps/records/Message.h"
#include "apps/records/OutputFile.h"
#include "apps/records/RecordsOptions.h"
#include "apps/records/StoreLocation.h"
#include "apps/records/TimeText.h"

#include "nodes/values/JsonText.h"

namespace Records {

namespace {

using Nodes::ArchiveFinding;
using Nodes::ArchiveFindings;

std::string jsonTime(Nodes::Timestamp time)
{
    return time == 0 ? std::string("null") : Nodes::JsonText(TimeText::format(time));
}

} // namespace

std::string VerifyCommand::describe(const ArchiveFinding &finding)
{
    std::string text = finding.place;
    const Nodes::RecordSource &source = finding.signal.source;
    if (source.node != 0)
        text += (text.empty() ? "signal " : ", signal ") + std::to_string(source.node) + " \"" +
                source.name + "\"";
    if (finding.from != 0 || finding.to != 0)
        text += ", " + TimeText::format(finding.from) + " to " + TimeText::format(finding.to);
    return text + (text.empty() ? "" : ": ") + finding.text;
}

bool VerifyCommand::run()
{
    ArchiveFindings findings;
    Nodes::Result result = m_archive.connect(m_options);
    if (result)
        result = m_archive.reader().Verify(findings, Host::StopRequest::flag());
    if (result == Nodes::Result::StorageError)
        result = Nodes::Result(result.GetType(), result.GetDetail() +
                                                     "; \"records archive repair\" recovers what "
                                                     "can be read");
    OutputFile output("");
    if (!Message::check(result) || !Message::check(output.open()))
        return false;
    output.write(m_options.isJson ? asJson(findings) : asText(findings));
    return Message::check(output.finish()) && findings.empty();
}

std::string VerifyCommand::asText(const ArchiveFindings &findings)
{
    std::string text;
    for (const ArchiveFinding &finding : findings)
        text += describe(finding) + "\n";
    if (!findings.empty())
        return text + std::to_string(findings.size()) +
               " findings; \"records archive repair\" recovers what can be read\n";
    std::vector<Nodes::ArchivedSignal> signals;
    std::uint64_t samples = 0;
    if (!m_archive.reader().ListSignals(signals))
        return "sound\n";
    for (const Nodes::ArchivedSignal &signal : signals)
        samples += signal.samples;
    return "sound: " + std::to_string(samples) + " samples of " + std::to_string(signals.size()) +
           " signals\n";
}

std::string VerifyCommand::asJson(const ArchiveFindings &findings) const
{
    std::string text =
        "{\n  \"archive\": " + Nodes::JsonText(StoreLocation::shown(m_archive.location())) +
        ",\n  \"findings\": [";
    for (const ArchiveFinding &finding : findings) {
        const Nodes::RecordSource &source = finding.signal.source;
        text += (&finding == &findings.front() ? "\n    {" : ",\n    {");
        text += "\"place\": " + Nodes::JsonText(finding.place) +
                ", \"id\": " + std::to_string(source.node) +
                ", \"name\": " + Nodes::JsonText(source.name) +
                ", \"from\": " + jsonTime(finding.from) + ", \"to\": " + jsonTime(finding.to) +
                ", \"text\": " + Nodes::JsonText(finding.text) + "}";
    }
    return text + "\n  ]\n}\n";
}

} // namespace Records
