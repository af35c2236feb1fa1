#include "apps/records/SampleTableWriter.h"

#include "apps/records/OutputFile.h"
#include "apps/records/TableText.h"
#include "apps/records/TimeText.h"

#include "nodes/values/NumberText.h"

#include <cmath>
#include <string>

namespace Records {

namespace {

using Nodes::SampleKind;
using Nodes::SampleRun;

std::string valueText(const SampleRun &run, std::size_t index)
{
    switch (run.KindAt(index)) {
    case SampleKind::Gap:
        break;
    case SampleKind::Number:
        return Nodes::FormatDouble(run.numbers[index]);
    case SampleKind::Logical:
        return run.numbers[index] != 0 ? "true" : "false";
    case SampleKind::Text:
        return TableText::quoted(run.TextAt(index));
    }
    return {};
}

std::string numberText(double number)
{
    return std::isnan(number) ? std::string() : Nodes::FormatDouble(number);
}

} // namespace

void SampleTableWriter::writeHeader()
{
    m_output.write("time,signal,value,quality\n");
}

void SampleTableWriter::write(unsigned long signal, const SampleRun &run, std::size_t index)
{
    std::string row = TimeText::format(run.times[index]);
    row += ',';
    row += std::to_string(signal);
    row += ',';
    row += valueText(run, index);
    row += ',';
    row += Nodes::QualityToken(run.qualities[index]);
    row += '\n';
    m_output.write(row);
}

void SampleTableWriter::writeBucketHeader()
{
    m_output.write("begin,end,signal,min,max,first,last,mean,count,quality\n");
}

void SampleTableWriter::write(unsigned long signal, const Nodes::ArchiveBucket &bucket)
{
    const Nodes::IntervalSample &interval = bucket.interval;
    std::string row = TimeText::format(interval.begin);
    row += ',' + TimeText::format(interval.end);
    row += ',' + std::to_string(signal);
    for (const double number :
         {interval.minimum, interval.maximum, interval.first, interval.last, bucket.mean})
        row += ',' + numberText(number);
    row += ',' + std::to_string(interval.count);
    row += ',';
    row += Nodes::QualityToken(interval.worst);
    row += '\n';
    m_output.write(row);
}

} // namespace Records
