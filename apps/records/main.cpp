#include "apps/common/process/StandardStreams.h"
#include "apps/common/process/StopRequest.h"
#include "apps/common/process/UnicodeLocale.h"
#include "apps/records/ExportCommand.h"
#include "apps/records/GenerateCommand.h"
#include "apps/records/ImportCommand.h"
#include "apps/records/InfoCommand.h"
#include "apps/records/JournalExportCommand.h"
#include "apps/records/JournalHeadCommand.h"
#include "apps/records/JournalVerifyCommand.h"
#include "apps/records/RecordsOptions.h"
#include "apps/records/RepairCommand.h"
#include "apps/records/VerifyCommand.h"

namespace {

using Records::RecordsOptions;

bool run(const RecordsOptions &options)
{
    switch (options.command) {
    case RecordsOptions::Command::Info:
        return Records::InfoCommand(options).run();
    case RecordsOptions::Command::Verify:
        return Records::VerifyCommand(options).run();
    case RecordsOptions::Command::Repair:
        return Records::RepairCommand(options).run();
    case RecordsOptions::Command::Import:
        return Records::ImportCommand(options).run();
    case RecordsOptions::Command::Export:
        return Records::ExportCommand(options).run();
    case RecordsOptions::Command::Generate:
        return Records::GenerateCommand(options).run();
    case RecordsOptions::Command::JournalVerify:
        return Records::JournalVerifyCommand(options).run();
    case RecordsOptions::Command::JournalHead:
        return Records::JournalHeadCommand(options).run();
    case RecordsOptions::Command::JournalExport:
        return Records::JournalExportCommand(options).run();
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    Host::StandardStreams::outliveReaders();
    Host::UseUnicodeLocale();
    Host::StopRequest::watch();
    RecordsOptions options;
    if (const auto done = options.parse(argc, argv))
        return *done;
    return run(options) ? 0 : 1;
}
