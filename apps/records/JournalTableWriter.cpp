#include "apps/records/JournalTableWriter.h"

#include "apps/records/JournalReceipt.h"
#include "apps/records/OutputFile.h"
#include "apps/records/TableText.h"
#include "apps/records/TimeText.h"

#include "nodes/journal/JournalRow.h"

namespace Records {

void JournalTableWriter::writeHeader()
{
    m_output.write("row,time,level,type,text,source,node,user,old,new,state,priority,occurrence,"
                   "project,station,station_name,key,version,previous,hash\n");
}

void JournalTableWriter::write(const Nodes::JournalRow &row, const std::string &previous,
                               const std::string &hash)
{
    const Nodes::BasicEvent &event = row.event;
    std::string line = std::to_string(event.id) + ',' + TimeText::format(event.time);
    const auto number = [&line](auto value) { line += ',' + std::to_string(value); };
    const auto text = [&line](const std::string &value) { line += ',' + TableText::quoted(value); };
    number(int(event.level));
    number(int(event.type));
    text(event.text);
    text(row.source.name);
    number(row.source.node);
    text(event.user);
    text(event.oldValue);
    text(event.newValue);
    number(int(event.alarmState));
    number(event.priority);
    number(event.occurrence);
    text(row.source.home.project);
    number(row.source.home.station);
    text(row.source.home.stationName);
    number(row.key);
    number(row.version);
    line += ',' + JournalReceipt::digitsOf(previous) + ',' + JournalReceipt::digitsOf(hash) + '\n';
    m_output.write(line);
}

} // namespace Records
